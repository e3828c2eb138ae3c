#pragma once

#include "data/DataFile.h"

#include <string>
#include <string_view>

/// Reads workbooks in the Office Open XML format (xlsx, xlsm; ECMA-376). Values are used as they are stored;
/// number formats are not applied.
namespace kavendra {

/// Reads the rows below the header of each sheet, in the order of the sheets. `sourceName` is the source of
/// the items. There is one log line for each sheet, with its header. Fails with
/// LaunchError::invalidExcelFormat, or with missingSupportedWorksheet if no sheet has the required columns.
/// Throws std::bad_alloc.
DataFileReading readWorkbookItems(const DataFile& file, std::string sourceName);

/// The same for a workbook in memory; `fileName` is used in messages.
DataFileReading readWorkbookBytes(std::string_view bytes, std::string_view fileName, std::string sourceName);

} // namespace kavendra
