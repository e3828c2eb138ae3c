#include "data/workbook/WorkbookContent.h"

#include "data/ItemMapper.h"
#include "data/workbook/WorkbookLimits.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kavendra {

namespace {

/// Size of the table of recent texts: 96 KiB.
constexpr std::size_t recentCount = 8192;

/// Returns a hash of the length and of at most 24 bytes of the text.
std::uint64_t sampledHash(std::string_view text) {
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
    const std::uint64_t hash = sampledHash(more);
    RecentText& recent = m_recentTexts[hash % recentCount];
    // The stored hash avoids most accesses to the memory of the other text.
    if (const auto upperHash = static_cast<std::uint32_t>(hash >> 32);
        recent.hash != upperHash || value(recent.span) != more)
        recent = {.hash = upperHash, .span = append(more)};
    return recent.span;
}

TextSpan WorkbookContent::append(std::string_view more) {
    const TextSpan span{.offset = static_cast<std::uint32_t>(text.size()),
                        .length = static_cast<std::uint32_t>(more.size())};
    text.append(more);
    return span;
}

} // namespace kavendra
