#pragma once

#include "data/DataFile.h"

#include <string>
#include <string_view>

/// Workbooks in the Office Open XML format (xlsx, xlsm; ECMA-376): of each sheet with a header, the rows
/// below it. Values are taken as they are stored, nothing is formatted.
namespace kavendra {

/// Reads a workbook as items, sheet after sheet, with `sourceName` as their source. The log lines are one a
/// sheet, with its header.
/// Fails with LaunchError::invalidExcelFormat, or missingSupportedWorksheet when no sheet has the required
/// columns. Throws std::bad_alloc.
DataFileReading readWorkbookItems(const DataFile& file, std::string sourceName);

/// The same for a workbook in memory; `fileName` is used in messages.
DataFileReading readWorkbookBytes(std::string_view bytes, std::string_view fileName, std::string sourceName);

} // namespace kavendra
