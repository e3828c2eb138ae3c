#include "data/WorkbookContent.h"

#include "data/WorkbookLimits.h"
#include "platform/Text.h"

#include <functional>

namespace kavendra {

namespace {

/// Enough for the commands and keywords of a long table, and small beside any table that needs it.
constexpr std::size_t recentCount = 8192;

std::string_view withoutSpaceAround(std::string_view text) {
    const auto isVisibleASCII = [](char byte) { return byte > ' ' && byte <= '~'; };
    const bool hasNone = !text.empty() && isVisibleASCII(text.front()) && isVisibleASCII(text.back());
    return hasNone ? text : trimmed(text);
}

} // namespace

bool WorkbookContent::hasRoomFor(std::size_t bytes) const {
    return bytes <= workbookLimits::textSize - text.size();
}

TextSpan WorkbookContent::appendTrimmed(std::string_view more) {
    return append(withoutSpaceAround(more));
}

TextSpan WorkbookContent::appendUnlessRecent(std::string_view more) {
    more = withoutSpaceAround(more);
    if (more.empty())
        return {};
    if (recentTexts.empty())
        recentTexts.resize(recentCount);
    TextSpan& recent = recentTexts[std::hash<std::string_view>()(more) % recentCount];
    if (value(recent) != more)
        recent = append(more);
    return recent;
}

TextSpan WorkbookContent::append(std::string_view more) {
    const TextSpan span{.offset = static_cast<std::uint32_t>(text.size()),
                        .length = static_cast<std::uint32_t>(more.size())};
    text.append(more);
    return span;
}

} // namespace kavendra
