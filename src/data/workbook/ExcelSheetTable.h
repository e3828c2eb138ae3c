#pragma once

#include "data/workbook/WorkbookContent.h"

#include <array>
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

/// Turns the cells of a sheet, as they come, into items: the rows below the first row with a "Title" are
/// mapped by the names that stand to the right of it.
class ExcelSheetTable {
public:
    /// The items go to `content.items`.
    explicit ExcelSheetTable(WorkbookContent& content) : content(content) {}

    /// Whether what stands in that column of the current row can matter.
    bool wantsCell(int column) const;

    void startRow();
    /// A later cell of the same column replaces an earlier one.
    void setCell(int column, TextSpan text);
    /// Returns what makes the sheet too large, or null.
    const char* endRow();

    /// The header's names joined for the log; nothing when the sheet has no header.
    const std::optional<std::string>& headerLine() const { return header; }
    /// Whether the header has all required columns. Only then the sheet has items.
    bool isSupported() const { return supported; }

private:
    const char* endHeaderRow(int firstColumn);
    const char* endItemRow();

    WorkbookContent& content;
    std::optional<std::string> header;
    bool supported = false;
    std::size_t rowCount = 0;
    ExcelRow currentRowValues;                         ///< while the header is looked for
    ItemRow currentItem{};                             ///< below the header
    std::array<int, requiredColumns.size()> columns{}; ///< the column of each required one, 0 for none
};

} // namespace kavendra
