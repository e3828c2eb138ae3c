#pragma once

#include "data/ItemList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kavendra {

/// What is kept of a workbook while it is read: its texts, trimmed, and the items as spans of them.
struct WorkbookContent {
    std::size_t fileSize = 0; ///< bounds what the items may take and what parsing may cost
    ByteBuffer text;
    std::vector<TextSpan> sharedStrings; ///< by their index in the workbook
    std::vector<ItemRow> items;          ///< of all sheets so far
    std::size_t itemTextSize = 0;        ///< the bytes of all items' texts
    std::size_t headerTextSize = 0;      ///< the bytes of all header lines
    std::size_t xmlCost = 0;             ///< of all that was parsed

    std::string_view value(TextSpan span) const { return text.view().substr(span.offset, span.length); }

    /// Whether that many more bytes of text may be kept.
    bool hasRoomFor(std::size_t bytes) const;

    /// Keeps the text without white space at its ends; there must be room for it. Throws std::bad_alloc.
    TextSpan appendTrimmed(std::string_view more);

    /// The same, but a text that was kept lately is not kept again: cells of one column often repeat a few.
    TextSpan appendUnlessRecent(std::string_view more);

private:
    struct RecentText {
        std::uint32_t print = 0;
        TextSpan span;
    };

    TextSpan append(std::string_view more);

    std::vector<RecentText> m_recentTexts; ///< each at the place that its fingerprint gives
};

} // namespace kavendra
