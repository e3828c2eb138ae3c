#pragma once

#include "data/workbook/XMLPart.h"

#include <string>
#include <unordered_map>
#include <vector>

/// The two parts that lead from a workbook to its worksheets (ECMA-376, part 1, 18.2 and part 2, 9.3).
namespace kavendra {

struct ExcelWorkbookSheetReference {
    std::string name; ///< as the workbook shows it
    std::string relationshipID;
};

/// The sheets in the order of the workbook.
class ExcelWorkbookParser final : public XMLHandler {
public:
    void startElement(const char* name, XMLAttributes attributes) override;

    std::vector<ExcelWorkbookSheetReference> sheets;
};

/// The entry names of the worksheets; other relationships, also those of chart sheets, are left out.
class ExcelWorkbookRelationshipsParser final : public XMLHandler {
public:
    void startElement(const char* name, XMLAttributes attributes) override;

    std::unordered_map<std::string, std::string> worksheetPathsByRelationshipID;
};

} // namespace kavendra
