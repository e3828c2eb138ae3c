#pragma once

#include "data/ItemMapper.h"
#include "data/LoadLimits.h"
#include "data/workbook/WorkbookContent.h"
#include "data/workbook/WorkbookLimits.h"
#include "data/workbook/XMLPart.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

/// A worksheet (ECMA-376, part 1, 18.3).
namespace kavendra {

/// The trimmed cells of a row by column number (1 is column A). A missing column is an empty text.
using ExcelRow = std::map<int, TextSpan>;

/// The area at the top left of a sheet in which the header is searched.
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

    /// Begins a row. Drops cells that were set after endRow().
    void startRow();
    /// Sets a cell. A later cell of the same column replaces an earlier one.
    void setCell(int column, TextSpan text);
    /// Ends the current row. Fails if the sheet exceeds a limit.
    Result<void> endRow();

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
    Result<void> endHeaderRow(int firstColumn);
    Result<void> endItemRow();

    WorkbookContent& m_content;
    ItemMapper m_mapper;
    int m_firstColumn = 0; ///< of the header; 0 until it is found
    bool m_isSupported = false;
    std::size_t m_rowCount = 0;
    ExcelRow m_searchedRow; ///< the current row while the header is searched
};

/// Returns the column number of a cell reference: 1 for A1, 2 for B7 and b7, 27 for AA1. Returns 0 if the
/// reference does not begin with a letter, and any number above workbookLimits::columns for a later column.
int columnIndex(std::string_view cellReference);

/// Passes the cells of a worksheet to a table. Row numbers are ignored: rows count in the order of the file.
class ExcelWorksheetParser final : public XMLHandler {
public:
    /// The rows go to `table`, with the texts of `content`.
    ExcelWorksheetParser(WorkbookContent& content, ExcelSheetTable& table)
        : m_content(content), m_table(table) {}

    Result<void> startElement(std::string_view name, XMLAttributes attributes) override;
    Result<void> characterData(std::string_view text) override;
    Result<void> endElement(std::string_view name) override;

private:
    enum class CellType { sharedString, inlineString, other };

    void startCell(XMLAttributes attributes);
    Result<void> endCell();
    TextSpan sharedString() const;

    WorkbookContent& m_content;
    ExcelSheetTable& m_table;
    int m_column = 0; ///< of the current cell
    CellType m_type = CellType::other;
    std::string m_value;
    bool m_isCapturing = false;
    bool m_isWanted = false; ///< whether the table needs the cell
};

} // namespace kavendra
