#pragma once

#include "data/ItemList.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kavendra {

/// The content of a workbook while it is read: the trimmed texts, and the items as spans of them.
struct WorkbookContent {
    std::size_t fileSize = 0; ///< the limits of memory and parsing depend on it
    ByteBuffer text;
    std::vector<TextSpan> sharedStrings; ///< by their index in the workbook
    std::vector<ItemRow> items;          ///< of all sheets so far
    std::size_t itemTextSize = 0;        ///< of all items, in bytes
    std::size_t headerTextSize = 0;      ///< of all header lines, in bytes
    std::size_t xmlCost = 0;             ///< of all parts parsed so far

    std::string_view value(TextSpan span) const { return text.view().substr(span.offset, span.length); }

    /// Whether `bytes` more bytes of text are within workbookLimits::textSize.
    bool hasRoomFor(std::size_t bytes) const;

    /// Appends the trimmed text and returns its span. Requires hasRoomFor(). Throws std::bad_alloc.
    TextSpan appendTrimmed(std::string_view more);

    /// As appendTrimmed, but returns the span of a recent equal text if there is one. Cells of a column often
    /// repeat a few texts.
    TextSpan appendUnlessRecent(std::string_view more);

private:
    struct RecentText {
        std::uint32_t hash = 0;
        TextSpan span;
    };

    TextSpan append(std::string_view more);

    std::vector<RecentText> m_recentTexts; ///< a hash table without chaining
};

} // namespace kavendra
