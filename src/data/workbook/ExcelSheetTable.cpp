#include "data/workbook/ExcelSheetTable.h"

#include "data/LoadLimits.h"
#include "data/workbook/WorkbookLimits.h"

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
    if (header)
        return supported && std::ranges::find(columns, column) != columns.end();
    return rowCount < headerSearchRows;
}

void ExcelSheetTable::startRow() {
    currentRowValues.clear();
    currentItem = {};
}

void ExcelSheetTable::setCell(int column, TextSpan text) {
    if (!header && rowCount < headerSearchRows)
        currentRowValues[column] = text;
    else
        for (std::size_t required = 0; required < columns.size(); ++required)
            if (columns[required] == column)
                currentItem[required] = text;
}

const char* ExcelSheetTable::endRow() {
    if (rowCount == workbookLimits::rows)
        return "too many rows";
    const bool isSearched = !header && rowCount < headerSearchRows;
    ++rowCount;
    if (supported)
        return endItemRow();
    if (const auto titleColumn = isSearched ? findHeaderCell(currentRowValues, content) : std::nullopt)
        return endHeaderRow(*titleColumn);
    return nullptr;
}

const char* ExcelSheetTable::endHeaderRow(int firstColumn) {
    header.emplace();
    for (int column = firstColumn; column <= currentRowValues.rbegin()->first; ++column) {
        const auto cell = currentRowValues.find(column);
        const std::string_view name = cell == currentRowValues.end() ? "" : content.value(cell->second);
        constexpr std::string_view separator = " | ";
        content.headerTextSize += separator.size() + name.size();
        if (content.headerTextSize > workbookLimits::headerTextSize)
            return "a header is too long";
        if (column > firstColumn)
            *header += separator;
        *header += name;
        const auto required = std::ranges::find(requiredColumns, name) - requiredColumns.begin();
        if (const auto index = static_cast<std::size_t>(required);
            index < columns.size() && columns[index] == 0)
            columns[index] = column;
    }
    supported = std::ranges::find(columns, 0) == columns.end();
    return nullptr;
}

const char* ExcelSheetTable::endItemRow() {
    std::size_t size = 0;
    for (const TextSpan text : currentItem)
        size += text.length;
    if (size == 0)
        return nullptr;
    if (content.items.size() == loadLimits::items)
        return "too many items";
    content.itemTextSize += size;
    const std::size_t memory = content.itemTextSize + content.items.size() * loadLimits::itemCost;
    if (memory > loadLimits::itemMemory(content.fileSize))
        return "too much text for the size of the file";
    content.items.push_back(currentItem);
    return nullptr;
}

} // namespace kavendra
