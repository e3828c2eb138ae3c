#include "data/workbook/ExcelSharedStringsParser.h"

#include "data/workbook/WorkbookLimits.h"

namespace kavendra {

void ExcelSharedStringsParser::startElement(const char* name, XMLAttributes) {
    if (isNamed(name, "si")) {
        isInsideSharedString = true;
        currentString.clear();
    } else if (isInsideSharedString && isNamed(name, "t")) {
        isCapturingText = true;
    }
}

void ExcelSharedStringsParser::characterData(std::string_view text) {
    if (!isCapturingText)
        return;
    if (text.size() > workbookLimits::cellSize - currentString.size())
        return fail("a shared string is too long");
    currentString += text;
}

void ExcelSharedStringsParser::endElement(const char* name) {
    if (isNamed(name, "t")) {
        isCapturingText = false;
    } else if (isNamed(name, "si")) {
        isInsideSharedString = false;
        if (content.sharedStrings.size() == workbookLimits::sharedStrings ||
            !content.hasRoomFor(currentString.size()))
            return fail("too many shared strings");
        content.sharedStrings.push_back(content.appendTrimmed(currentString));
    }
}

} // namespace kavendra
