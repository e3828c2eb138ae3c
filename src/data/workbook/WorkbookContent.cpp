#include "data/workbook/WorkbookContent.h"

#include "data/ItemMapper.h"
#include "data/workbook/WorkbookLimits.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kavendra {

namespace {

/// Enough for the commands and keywords of a long table, and small beside any table that needs it.
constexpr std::size_t recentCount = 8192;

/// A number that texts which differ rarely share. It looks at 24 bytes of a long text, no more.
std::uint64_t fingerprint(std::string_view text) {
    const auto eightBytesAt = [text](std::size_t offset) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + offset, std::min(text.size(), sizeof bytes));
        return bytes;
    };
    std::uint64_t mixed = text.size();
    const std::size_t last = text.size() - std::min<std::size_t>(text.size(), 8);
    for (const std::size_t offset : {std::size_t{0}, last / 2, last})
        mixed = (mixed ^ eightBytesAt(offset)) * 0x9E3779B97F4A7C15; // 2^64 by the golden ratio
    return mixed ^ mixed >> 32;
}

} // namespace

bool WorkbookContent::hasRoomFor(std::size_t bytes) const {
    return bytes <= workbookLimits::textSize - text.size();
}

TextSpan WorkbookContent::appendTrimmed(std::string_view more) {
    return append(trimmedCell(more));
}

TextSpan WorkbookContent::appendUnlessRecent(std::string_view more) {
    more = trimmedCell(more);
    if (more.empty())
        return {};
    if (m_recentTexts.empty())
        m_recentTexts.resize(recentCount);
    const std::uint64_t print = fingerprint(more);
    RecentText& recent = m_recentTexts[print % recentCount];
    // Most texts that are not there show it by their print, before the memory of the other text is touched.
    if (const auto shortPrint = static_cast<std::uint32_t>(print >> 32);
        recent.print != shortPrint || value(recent.span) != more)
        recent = {.print = shortPrint, .span = append(more)};
    return recent.span;
}

TextSpan WorkbookContent::append(std::string_view more) {
    const TextSpan span{.offset = static_cast<std::uint32_t>(text.size()),
                        .length = static_cast<std::uint32_t>(more.size())};
    text.append(more);
    return span;
}

} // namespace kavendra
