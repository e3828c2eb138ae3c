#include "data/workbook/WorkbookReader.h"

#include "data/DataErrors.h"
#include "data/LoadLimits.h"
#include "data/workbook/ExcelPackageParsers.h"
#include "data/workbook/ExcelWorksheetParser.h"
#include "data/workbook/WorkbookArchive.h"
#include "data/workbook/WorkbookLimits.h"
#include "platform/Files.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kavendra {

namespace {

struct ParsedExcelSheet {
    std::string name;
    std::optional<std::string> headerLine; ///< nothing when the sheet has no header
    bool isSupported = false;
};

Result<void> parsePart(ArchiveEntry part, WorkbookContent& content, XMLHandler& handler,
                       const char* fallbackText) {
    const auto readPiece = [&](char* buffer, std::size_t capacity) -> Result<std::size_t> {
        auto count = part.read(buffer, capacity);
        if (count)
            content.xmlCost += xmlCost({buffer, *count});
        if (content.xmlCost > loadLimits::xmlCost(content.fileSize))
            return std::unexpected(Error{"too much XML for the size of the file"});
        return count;
    };
    auto parsed = parseXML(readPiece, handler, fallbackText);
    if (!parsed)
        return std::unexpected(Error{part.name() + ": " + parsed.error().description});
    return parsed;
}

Result<ArchiveEntry> readPackagePart(WorkbookArchive& archive, std::string_view name) {
    auto part = archive.readArchiveEntry(name);
    if (part && part->size() > workbookLimits::packagePartSize)
        return std::unexpected(Error{part->name() + ": too large"});
    return part;
}

struct WorksheetPath {
    std::string sheetName;
    std::string entryName;
};

/// Returns the worksheets in the order of the workbook, without those that have no worksheet part.
Result<std::vector<WorksheetPath>> worksheetPaths(ArchiveEntry workbookPart, ArchiveEntry relationshipsPart,
                                                  WorkbookContent& content) {
    ExcelWorkbookParser workbook;
    if (auto parsed = parsePart(std::move(workbookPart), content, workbook, "Failed to parse workbook.xml");
        !parsed)
        return std::unexpected(parsed.error());
    ExcelWorkbookRelationshipsParser relationships;
    if (auto parsed = parsePart(std::move(relationshipsPart), content, relationships,
                                "Failed to parse workbook relationships");
        !parsed)
        return std::unexpected(parsed.error());
    std::vector<WorksheetPath> paths;
    for (ExcelWorkbookSheetReference& sheet : workbook.sheets) {
        const auto path = relationships.worksheetPathsByRelationshipID.find(sheet.relationshipID);
        if (path != relationships.worksheetPathsByRelationshipID.end())
            paths.push_back({.sheetName = std::move(sheet.name), .entryName = path->second});
    }
    return paths;
}

/// Reads all sheets; their items go to `content`.
Result<std::vector<ParsedExcelSheet>> readWorkbookSheets(WorkbookArchive& archive, WorkbookContent& content) {
    auto workbookPart = readPackagePart(archive, "xl/workbook.xml");
    if (!workbookPart)
        return std::unexpected(workbookPart.error());
    auto relationshipsPart = readPackagePart(archive, "xl/_rels/workbook.xml.rels");
    if (!relationshipsPart)
        return std::unexpected(relationshipsPart.error());
    auto sharedStringsPart = archive.readOptionalArchiveEntry("xl/sharedStrings.xml");
    if (!sharedStringsPart)
        return std::unexpected(sharedStringsPart.error());

    if (sharedStringsPart->has_value()) {
        ExcelSharedStringsParser sharedStrings(content);
        if (auto parsed = parsePart(std::move(**sharedStringsPart), content, sharedStrings,
                                    "Failed to parse shared strings");
            !parsed)
            return std::unexpected(parsed.error());
    }
    const auto paths = worksheetPaths(std::move(*workbookPart), std::move(*relationshipsPart), content);
    if (!paths)
        return std::unexpected(paths.error());

    std::vector<ParsedExcelSheet> sheets;
    for (const WorksheetPath& path : *paths) {
        auto part = archive.readArchiveEntry(path.entryName);
        if (!part)
            return std::unexpected(part.error());
        ExcelSheetTable table(content);
        ExcelWorksheetParser worksheet(content, table);
        if (auto parsed = parsePart(std::move(*part), content, worksheet, "Failed to parse worksheet");
            !parsed)
            return std::unexpected(parsed.error());
        sheets.push_back(
            {.name = path.sheetName, .headerLine = table.headerLine(), .isSupported = table.isSupported()});
    }
    return sheets;
}

std::string headerLogLine(const ParsedExcelSheet& sheet, std::string_view fileName) {
    static const std::string notFound =
        "not found in first " + std::to_string(headerSearchRows) + "x" + std::to_string(headerSearchColumns);
    return "Excel headers (" + std::string(fileName) + " / " + sheet.name +
           "): " + sheet.headerLine.value_or(notFound);
}

std::unexpected<Error> invalid(std::string_view fileName, const Error& error) {
    return LaunchError::invalidExcelFormat(std::string(fileName) + ": " + error.description);
}

DataFileReading readArchive(Result<WorkbookArchive> archive, std::string_view fileName,
                            std::string sourceName) {
    if (!archive)
        return {.logLines = {}, .items = invalid(fileName, archive.error())};
    WorkbookContent content;
    content.fileSize = archive->fileSize();
    // An upper bound, because it includes the markup. Unused address space needs no memory.
    content.text.reserve(std::min(archive->inflatedSize(), workbookLimits::textSize));
    const auto sheets = readWorkbookSheets(*archive, content);
    if (!sheets)
        return {.logLines = {}, .items = invalid(fileName, sheets.error())};
    DataFileReading reading;
    for (const ParsedExcelSheet& sheet : *sheets)
        reading.logLines.push_back(headerLogLine(sheet, fileName));
    if (std::ranges::none_of(*sheets, &ParsedExcelSheet::isSupported)) {
        reading.items = LaunchError::missingSupportedWorksheet(fileName);
        return reading;
    }
    content.text.shrinkToFit();
    reading.items = ItemBlock{.text = std::move(content.text),
                              .rows = std::move(content.items),
                              .source = std::move(sourceName),
                              .fileSize = content.fileSize,
                              .xmlCost = content.xmlCost};
    return reading;
}

} // namespace

DataFileReading readWorkbookItems(const DataFile& file, std::string sourceName) {
    auto opened = openRegularFile(file.path, workbookLimits::fileSize);
    if (!opened) // the system's reason names the file
        return {.logLines = {}, .items = LaunchError::invalidExcelFormat(opened.error().description)};
    return readArchive(WorkbookArchive::open(std::move(*opened)), file.name, std::move(sourceName));
}

DataFileReading readWorkbookBytes(std::string_view bytes, std::string_view fileName, std::string sourceName) {
    return readArchive(WorkbookArchive::open(bytes), fileName, std::move(sourceName));
}

} // namespace kavendra
