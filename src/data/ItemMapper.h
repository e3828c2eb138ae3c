#pragma once

#include "base/Text.h"
#include "data/ItemList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Returns the text of a cell without White_Space characters at both ends.
inline std::string_view trimmedCell(std::string_view text) {
    const auto isVisibleASCII = [](char byte) { return byte > ' ' && byte <= '~'; };
    const bool isTrimmed = text.empty() || (isVisibleASCII(text.front()) && isVisibleASCII(text.back()));
    return isTrimmed ? text : trimmed(text);
}

/// Maps a table to items. First takes the cells of the header, then the rows; cells are numbered from 0, the
/// first cell of the header. All texts are trimmed. The functions called for each cell are inline.
class ItemMapper {
public:
    /// Items are appended to `items`, at most until it holds `maximumItems`. `maximumHeaderLine` is the size
    /// of headerLine() in bytes at which it is cut.
    ItemMapper(std::vector<ItemRow>& items, std::size_t maximumItems, std::size_t maximumHeaderLine)
        : m_items(items), m_maximumItems(maximumItems), m_maximumHeaderLine(maximumHeaderLine) {}

    /// Takes the next cell of the header. Of cells with the same name the first is used.
    void addHeaderCell(std::string_view name);

    /// The names of the header's cells, joined with " | "; an ellipsis at the end means that it is cut.
    const std::string& headerLine() const { return m_headerLine; }
    bool isHeaderLineCut() const { return m_isHeaderLineCut; }

    /// Returns the first required column that the header lacks.
    std::optional<std::string_view> missingColumn() const;

    /// Not a required column.
    static constexpr std::uint8_t otherColumn = 0xFF;

    /// Returns the index in requiredColumns of the column of a cell, or otherColumn.
    std::uint8_t columnOf(std::size_t cell) const {
        return cell < m_columns.size() ? m_columns[cell] : otherColumn;
    }

    /// Sets the text of the current row in a required column.
    void setText(std::uint8_t column, TextSpan text) { m_row[column] = text; }

    /// Notes that the current row has text in other columns and is therefore not blank.
    void setHasOtherText() { m_hasOtherText = true; }

    /// Whether the current row has no text so far.
    bool isRowBlank() const {
        std::uint32_t lengths = 0; // without branches: this runs for each field of other columns
        for (const TextSpan text : m_row)
            lengths |= text.length;
        return !m_hasOtherText && lengths == 0;
    }

    enum class RowEnd : std::uint8_t { blank, added, tooManyItems };

    /// Ends the current row, which becomes an item unless it is blank, and begins the next one.
    RowEnd endRow() {
        const RowEnd end = isRowBlank()                       ? RowEnd::blank
                           : m_items.size() == m_maximumItems ? RowEnd::tooManyItems
                                                              : RowEnd::added;
        if (end == RowEnd::added)
            m_items.push_back(m_row);
        clearRow();
        return end;
    }

    /// Drops the texts of the current row.
    void clearRow() {
        m_row = {};
        m_hasOtherText = false;
    }

private:
    void addToHeaderLine(std::string_view text);

    std::vector<ItemRow>& m_items;
    std::size_t m_maximumItems;
    std::size_t m_maximumHeaderLine;
    std::string m_headerLine;
    bool m_isHeaderLineCut = false;
    std::vector<std::uint8_t> m_columns; ///< for each cell of the header, its column
    std::array<bool, requiredColumns.size()> m_hasColumn{};
    ItemRow m_row{};
    bool m_hasOtherText = false;
};

} // namespace kavendra
