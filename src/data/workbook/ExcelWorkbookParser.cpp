#include "data/workbook/ExcelWorkbookParser.h"

#include "data/workbook/WorkbookLimits.h"

namespace kavendra {

void ExcelWorkbookParser::startElement(const char* name, XMLAttributes attributes) {
    if (!isNamed(name, "sheet"))
        return;
    const char* sheetName = attributes.find("name");
    const char* relationshipID = attributes.find("r:id");
    if (!sheetName || !relationshipID)
        return;
    if (sheets.size() == workbookLimits::entries)
        return fail("too many sheets");
    sheets.push_back({.name = sheetName, .relationshipID = relationshipID});
}

void ExcelWorkbookRelationshipsParser::startElement(const char* name, XMLAttributes attributes) {
    if (!isNamed(name, "Relationship"))
        return;
    const char* relationshipID = attributes.find("Id");
    const char* type = attributes.find("Type");
    const char* target = attributes.find("Target");
    if (!relationshipID || !type || !target || !std::string_view(type).ends_with("/worksheet"))
        return;
    if (worksheetPathsByRelationshipID.size() == workbookLimits::entries)
        return fail("too many relationships");
    worksheetPathsByRelationshipID[relationshipID] =
        *target == '/' ? std::string(target + 1) : std::string("xl/") + target;
}

} // namespace kavendra
