#include "data/workbook/ExcelWorksheetParser.h"

#include <algorithm>

namespace kavendra {

std::optional<int> findHeaderCell(const ExcelRow& row, const WorkbookContent& content) {
    for (const auto& [column, text] : row) {
        if (column > headerSearchColumns)
            break;
        if (content.value(text) == requiredColumns.front())
            return column;
    }
    return {};
}

bool ExcelSheetTable::wantsCell(int column) const {
    if (m_firstColumn > 0)
        return m_isSupported && requiredColumnAt(column) != ItemMapper::otherColumn;
    return m_rowCount < headerSearchRows;
}

void ExcelSheetTable::startRow() {
    m_searchedRow.clear();
    m_mapper.clearRow();
}

void ExcelSheetTable::setCell(int column, TextSpan text) {
    if (m_firstColumn == 0)
        m_searchedRow[column] = text;
    else if (const auto required = requiredColumnAt(column); required != ItemMapper::otherColumn)
        m_mapper.setText(required, text);
}

Result<void> ExcelSheetTable::endRow() {
    if (m_rowCount == workbookLimits::rows)
        return std::unexpected(Error{"too many rows"});
    ++m_rowCount;
    if (m_isSupported)
        return endItemRow();
    if (const auto column = findHeaderCell(m_searchedRow, m_content); column && m_firstColumn == 0)
        return endHeaderRow(*column);
    return {};
}

Result<void> ExcelSheetTable::endHeaderRow(int firstColumn) {
    m_firstColumn = firstColumn;
    for (int column = firstColumn; column <= m_searchedRow.rbegin()->first; ++column) {
        const auto cell = m_searchedRow.find(column);
        m_mapper.addHeaderCell(cell == m_searchedRow.end() ? "" : m_content.value(cell->second));
        if (m_mapper.isHeaderLineCut())
            return std::unexpected(Error{"a header is too long"});
    }
    m_content.headerTextSize += m_mapper.headerLine().size();
    m_isSupported = !m_mapper.missingColumn();
    return {};
}

Result<void> ExcelSheetTable::endItemRow() {
    const auto end = m_mapper.endRow();
    if (end == ItemMapper::RowEnd::tooManyItems)
        return std::unexpected(Error{"too many items"});
    if (end == ItemMapper::RowEnd::blank)
        return {};
    for (const TextSpan text : m_content.items.back())
        m_content.itemTextSize += text.length;
    const std::size_t memory = m_content.itemTextSize + m_content.items.size() * loadLimits::itemCost;
    if (memory > loadLimits::itemMemory(m_content.fileSize))
        return std::unexpected(Error{"too much text for the size of the file"});
    return {};
}

int columnIndex(std::string_view cellReference) {
    int column = 0;
    for (const char letter : cellReference) {
        const char upper = static_cast<char>(letter & ~0x20);
        if (upper < 'A' || upper > 'Z')
            break;
        column = std::min(column * 26 + (upper - 'A' + 1), workbookLimits::columns + 1);
    }
    return column;
}

Result<void> ExcelWorksheetParser::startElement(std::string_view name, XMLAttributes attributes) {
    if (name == "c")
        startCell(attributes);
    else if (name == "v")
        m_isCapturing = true;
    else if (name == "t")
        m_isCapturing = m_isCapturing || m_type == CellType::inlineString;
    else if (name == "row")
        m_table.startRow();
    return {};
}

Result<void> ExcelWorksheetParser::characterData(std::string_view text) {
    if (!m_isCapturing || !m_isWanted)
        return {};
    if (text.size() > workbookLimits::cellSize - m_value.size())
        return std::unexpected(Error{"a cell is too long"});
    m_value += text;
    return {};
}

Result<void> ExcelWorksheetParser::endElement(std::string_view name) {
    if (name == "c")
        return endCell();
    if (name == "row")
        return m_table.endRow();
    if (name == "v")
        m_isCapturing = false;
    else if (name == "t")
        m_isCapturing = m_isCapturing && m_type != CellType::inlineString;
    return {};
}

void ExcelWorksheetParser::startCell(XMLAttributes attributes) {
    const auto type = attributes.find("t");
    m_column = columnIndex(attributes.find("r").value_or(""));
    m_type = type == "s"           ? CellType::sharedString
             : type == "inlineStr" ? CellType::inlineString
                                   : CellType::other;
    m_value.clear();
    // Cells beyond the last column are ignored; the rest of such a sheet is read.
    m_isWanted = m_column > 0 && m_column <= workbookLimits::columns && m_table.wantsCell(m_column);
}

Result<void> ExcelWorksheetParser::endCell() {
    if (!m_isWanted)
        return {};
    if (m_type != CellType::sharedString && !m_content.hasRoomFor(m_value.size()))
        return std::unexpected(Error{"too much text"});
    m_table.setCell(m_column, m_type == CellType::sharedString ? sharedString()
                                                               : m_content.appendUnlessRecent(m_value));
    return {};
}

/// Returns the shared string that the value is the index of, empty if there is none.
TextSpan ExcelWorksheetParser::sharedString() const {
    std::string_view digits = m_value;
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    if (digits.empty())
        return {};
    std::size_t index = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return {};
        index = std::min(index * 10 + static_cast<std::size_t>(digit - '0'), m_content.sharedStrings.size());
    }
    const bool isIndex = index < m_content.sharedStrings.size() && (!isNegative || index == 0);
    return isIndex ? m_content.sharedStrings[index] : TextSpan{};
}

} // namespace kavendra
