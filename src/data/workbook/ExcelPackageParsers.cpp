#include "data/workbook/ExcelPackageParsers.h"

#include "data/workbook/WorkbookLimits.h"

namespace kavendra {

Result<void> ExcelWorkbookParser::startElement(std::string_view name, XMLAttributes attributes) {
    if (name != "sheet")
        return {};
    const auto sheetName = attributes.find("name");
    const auto relationshipID = attributes.find("r:id");
    if (!sheetName || !relationshipID)
        return {};
    if (sheets.size() == workbookLimits::entries)
        return std::unexpected(Error{"too many sheets"});
    sheets.push_back({.name = std::string(*sheetName), .relationshipID = std::string(*relationshipID)});
    return {};
}

Result<void> ExcelWorkbookRelationshipsParser::startElement(std::string_view name, XMLAttributes attributes) {
    if (name != "Relationship")
        return {};
    const auto relationshipID = attributes.find("Id");
    const auto type = attributes.find("Type");
    const auto target = attributes.find("Target");
    if (!relationshipID || !type || !target || !type->ends_with("/worksheet"))
        return {};
    if (worksheetPathsByRelationshipID.size() == workbookLimits::entries)
        return std::unexpected(Error{"too many relationships"});
    worksheetPathsByRelationshipID[std::string(*relationshipID)] =
        target->starts_with('/') ? std::string(target->substr(1)) : std::string("xl/").append(*target);
    return {};
}

Result<void> ExcelSharedStringsParser::startElement(std::string_view name, XMLAttributes) {
    if (name == "si") {
        m_isInsideItem = true;
        m_string.clear();
    } else if (m_isInsideItem && name == "t") {
        m_isCapturing = true;
    }
    return {};
}

Result<void> ExcelSharedStringsParser::characterData(std::string_view text) {
    if (!m_isCapturing)
        return {};
    if (text.size() > workbookLimits::cellSize - m_string.size())
        return std::unexpected(Error{"a shared string is too long"});
    m_string += text;
    return {};
}

Result<void> ExcelSharedStringsParser::endElement(std::string_view name) {
    if (name == "t") {
        m_isCapturing = false;
    } else if (name == "si") {
        m_isInsideItem = false;
        if (m_content.sharedStrings.size() == workbookLimits::sharedStrings ||
            !m_content.hasRoomFor(m_string.size()))
            return std::unexpected(Error{"too many shared strings"});
        m_content.sharedStrings.push_back(m_content.appendTrimmed(m_string));
    }
    return {};
}

} // namespace kavendra
