#pragma once

#include "data/workbook/WorkbookContent.h"
#include "data/workbook/XMLPart.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Parsers for the parts that all worksheets of a workbook share (ECMA-376, part 1, 18.2 and 18.4; part
/// 2, 9.3).
namespace kavendra {

struct ExcelWorkbookSheetReference {
    std::string name; ///< as the workbook shows it
    std::string relationshipID;
};

/// Collects the sheets in the order of the workbook.
class ExcelWorkbookParser final : public XMLHandler {
public:
    Result<void> startElement(std::string_view name, XMLAttributes attributes) override;

    std::vector<ExcelWorkbookSheetReference> sheets;
};

/// Collects the entry names of the worksheets. Ignores other relationships, for example those of chart
/// sheets.
class ExcelWorkbookRelationshipsParser final : public XMLHandler {
public:
    Result<void> startElement(std::string_view name, XMLAttributes attributes) override;

    std::unordered_map<std::string, std::string> worksheetPathsByRelationshipID;
};

/// Collects the texts that cells refer to by their index. All texts inside an item are joined: the runs of
/// rich text and the phonetic reading.
class ExcelSharedStringsParser final : public XMLHandler {
public:
    /// The texts go to `content.sharedStrings`.
    explicit ExcelSharedStringsParser(WorkbookContent& content) : m_content(content) {}

    Result<void> startElement(std::string_view name, XMLAttributes attributes) override;
    Result<void> characterData(std::string_view text) override;
    Result<void> endElement(std::string_view name) override;

private:
    WorkbookContent& m_content;
    std::string m_string;
    bool m_isInsideItem = false;
    bool m_isCapturing = false;
};

} // namespace kavendra
