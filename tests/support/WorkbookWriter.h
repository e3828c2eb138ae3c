#pragma once

#include "tests/support/ZipWriter.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The parts of a workbook by entry name; tests change some of them.
using WorkbookParts = std::map<std::string, std::string>;

/// Returns the parts of a workbook with these worksheets, each given by the content of its sheetData element.
/// `sharedStrings` is the content of the sst element; there is no string table if it is empty.
inline WorkbookParts workbookParts(const std::vector<std::string>& sheets,
                                   const std::string& sharedStrings = {}) {
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    const std::string officeDocument = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const std::string main = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
    std::string references, relationships;
    WorkbookParts parts;
    for (std::size_t index = 0; index < sheets.size(); ++index) {
        const std::string number = std::to_string(index + 1);
        references +=
            "<sheet name=\"Sheet" + number + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
        relationships += "<Relationship Id=\"rId" + number + "\" Type=\"" + officeDocument +
                         "/worksheet\" Target=\"worksheets/sheet" + number + ".xml\"/>";
        parts["xl/worksheets/sheet" + number + ".xml"] =
            declaration + "<worksheet" + main + "><sheetData>" + sheets[index] + "</sheetData></worksheet>";
    }
    parts["xl/workbook.xml"] = declaration + "<workbook" + main + " xmlns:r=\"" + officeDocument +
                               "\"><sheets>" + references + "</sheets></workbook>";
    parts["xl/_rels/workbook.xml.rels"] =
        declaration +
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
        relationships + "</Relationships>";
    if (!sharedStrings.empty())
        parts["xl/sharedStrings.xml"] = declaration + "<sst" + main + ">" + sharedStrings + "</sst>";
    return parts;
}

inline std::vector<ZipEntry> zipEntries(const WorkbookParts& parts) {
    std::vector<ZipEntry> entries;
    for (const auto& [name, content] : parts)
        entries.push_back({.name = name, .content = content});
    return entries;
}

inline std::string makeWorkbook(const WorkbookParts& parts) {
    return makeZip(zipEntries(parts));
}

inline std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    while (times-- > 0)
        result += text;
    return result;
}

/// Returns a row of inline strings from column A.
inline std::string inlineRow(const std::vector<std::string>& texts) {
    std::string row = "<row>";
    char column = 'A';
    for (const std::string& text : texts)
        row += std::string("<c r=\"") + column++ + "1\" t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
    return row + "</row>";
}

inline std::string headerRow() {
    return inlineRow({"Title", "Command", "Params", "Keywords"});
}

} // namespace kavendra
