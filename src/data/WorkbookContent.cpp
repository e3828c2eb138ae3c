#include "data/WorkbookContent.h"

#include "data/WorkbookLimits.h"
#include "platform/Text.h"

namespace kavendra {

bool WorkbookContent::hasRoomFor(std::size_t bytes) const {
    return bytes <= workbookLimits::textSize - text.size();
}

TextSpan WorkbookContent::appendTrimmed(std::string_view more) {
    const auto isVisibleASCII = [](char byte) { return byte > ' ' && byte <= '~'; };
    if (!more.empty() && !(isVisibleASCII(more.front()) && isVisibleASCII(more.back())))
        more = trimmed(more);
    const TextSpan span{.offset = static_cast<std::uint32_t>(text.size()),
                        .length = static_cast<std::uint32_t>(more.size())};
    text.append(more);
    return span;
}

} // namespace kavendra
