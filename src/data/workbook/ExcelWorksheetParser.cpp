#include "data/workbook/ExcelWorksheetParser.h"

#include "data/workbook/WorkbookLimits.h"

#include <algorithm>

namespace kavendra {

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

void ExcelWorksheetParser::startElement(const char* name, XMLAttributes attributes) {
    if (isNamed(name, "c"))
        startCell(attributes);
    else if (isNamed(name, "v"))
        isCapturingValue = true;
    else if (isNamed(name, "t"))
        isCapturingValue = isCapturingValue || currentCellType == CellType::inlineString;
    else if (isNamed(name, "row"))
        table.startRow();
}

void ExcelWorksheetParser::characterData(std::string_view text) {
    if (!isCapturingValue || !isWanted)
        return;
    if (text.size() > workbookLimits::cellSize - currentCellValue.size())
        return fail("a cell is too long");
    currentCellValue += text;
}

void ExcelWorksheetParser::endElement(const char* name) {
    if (isNamed(name, "c")) {
        endCell();
    } else if (isNamed(name, "v")) {
        isCapturingValue = false;
    } else if (isNamed(name, "t")) {
        isCapturingValue = isCapturingValue && currentCellType != CellType::inlineString;
    } else if (isNamed(name, "row")) {
        if (const char* problem = table.endRow())
            fail(problem);
    }
}

void ExcelWorksheetParser::startCell(XMLAttributes attributes) {
    const char* reference = attributes.find("r");
    const char* type = attributes.find("t");
    currentColumnIndex = reference ? columnIndex(reference) : 0;
    currentCellType = !type                        ? CellType::other
                      : isNamed(type, "s")         ? CellType::sharedString
                      : isNamed(type, "inlineStr") ? CellType::inlineString
                                                   : CellType::other;
    currentCellValue.clear();
    // A cell beyond the last column is dropped: the rest of such a sheet is good.
    isWanted = currentColumnIndex > 0 && currentColumnIndex <= workbookLimits::columns &&
               table.wantsCell(currentColumnIndex);
}

void ExcelWorksheetParser::endCell() {
    if (!isWanted)
        return;
    if (currentCellType == CellType::sharedString)
        return table.setCell(currentColumnIndex, sharedString());
    if (!content.hasRoomFor(currentCellValue.size()))
        return fail("too much text");
    table.setCell(currentColumnIndex, content.appendUnlessRecent(currentCellValue));
}

/// The shared string that the value names, the empty text when it is no index of one.
TextSpan ExcelWorksheetParser::sharedString() const {
    std::string_view digits = currentCellValue;
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    if (digits.empty())
        return {};
    std::size_t index = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9')
            return {};
        index = std::min(index * 10 + static_cast<std::size_t>(digit - '0'), content.sharedStrings.size());
    }
    const bool isIndex = index < content.sharedStrings.size() && (!isNegative || index == 0);
    return isIndex ? content.sharedStrings[index] : TextSpan{};
}

} // namespace kavendra
