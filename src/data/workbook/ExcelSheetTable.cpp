#include "data/workbook/ExcelSheetTable.h"

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

const char* ExcelSheetTable::endRow() {
    if (m_rowCount == workbookLimits::rows)
        return "too many rows";
    ++m_rowCount;
    if (m_isSupported)
        return endItemRow();
    if (const auto column = findHeaderCell(m_searchedRow, m_content); column && m_firstColumn == 0)
        return endHeaderRow(*column);
    return nullptr;
}

const char* ExcelSheetTable::endHeaderRow(int firstColumn) {
    m_firstColumn = firstColumn;
    for (int column = firstColumn; column <= m_searchedRow.rbegin()->first; ++column) {
        const auto cell = m_searchedRow.find(column);
        m_mapper.addHeaderCell(cell == m_searchedRow.end() ? "" : m_content.value(cell->second));
        if (m_mapper.isHeaderLineCut())
            return "a header is too long";
    }
    m_content.headerTextSize += m_mapper.headerLine().size();
    m_isSupported = !m_mapper.missingColumn();
    return nullptr;
}

const char* ExcelSheetTable::endItemRow() {
    const auto end = m_mapper.endRow();
    if (end == ItemMapper::RowEnd::tooManyItems)
        return "too many items";
    if (end == ItemMapper::RowEnd::blank)
        return nullptr;
    for (const TextSpan text : m_content.items.back())
        m_content.itemTextSize += text.length;
    const std::size_t memory = m_content.itemTextSize + m_content.items.size() * loadLimits::itemCost;
    if (memory > loadLimits::itemMemory(m_content.fileSize))
        return "too much text for the size of the file";
    return nullptr;
}

} // namespace kavendra
