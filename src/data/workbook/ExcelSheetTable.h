#pragma once

#include "data/ItemMapper.h"
#include "data/LoadLimits.h"
#include "data/workbook/WorkbookContent.h"
#include "data/workbook/WorkbookLimits.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace kavendra {

/// The cells that a row has, trimmed, by column number (1 is column A). Columns without a cell hold the empty
/// text; the row is as long as its last cell.
using ExcelRow = std::map<int, TextSpan>;

/// The header is looked for in this many rows from the top and, in each of them, columns from the left.
inline constexpr int headerSearchRows = 5;
inline constexpr int headerSearchColumns = 5;

/// Returns the column of the row's first "Title" within the search area, or nothing.
std::optional<int> findHeaderCell(const ExcelRow& row, const WorkbookContent& content);

/// Maps the cells of a sheet to items. The header is the first row with a "Title" in the search area; it
/// begins at that cell.
class ExcelSheetTable {
public:
    /// The items go to `content.items`.
    explicit ExcelSheetTable(WorkbookContent& content)
        : m_content(content), m_mapper(content.items, loadLimits::items,
                                       workbookLimits::headerTextSize - content.headerTextSize) {}

    /// Whether the cell of that column in the current row is needed: a possible header or a required column.
    bool wantsCell(int column) const;

    /// Begins a row. Drops cells since the end of the last one.
    void startRow();
    /// Sets a cell. A later cell of the same column replaces an earlier one.
    void setCell(int column, TextSpan text);
    /// Ends the current row. Returns the limit that the sheet exceeds, or null.
    const char* endRow();

    /// The header's names joined for the log; nothing if the sheet has no header.
    std::optional<std::string> headerLine() const {
        return m_firstColumn > 0 ? std::optional(m_mapper.headerLine()) : std::nullopt;
    }
    /// Whether the header has all required columns. Only then the sheet has items.
    bool isSupported() const { return m_isSupported; }

private:
    std::uint8_t requiredColumnAt(int column) const {
        return column < m_firstColumn ? ItemMapper::otherColumn
                                      : m_mapper.columnOf(static_cast<std::size_t>(column - m_firstColumn));
    }
    const char* endHeaderRow(int firstColumn);
    const char* endItemRow();

    WorkbookContent& m_content;
    ItemMapper m_mapper;
    int m_firstColumn = 0; ///< of the header; 0 until it is found
    bool m_isSupported = false;
    std::size_t m_rowCount = 0;
    ExcelRow m_searchedRow; ///< the current row while the header is searched
};

} // namespace kavendra
