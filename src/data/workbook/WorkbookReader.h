#pragma once

#include "base/LogLine.h"
#include "base/Result.h"
#include "data/ItemList.h"

#include <string>
#include <string_view>

/// Workbooks in the Office Open XML format (xlsx, xlsm; ECMA-376): of each sheet with a header, the rows
/// below it. Values are taken as they are stored, nothing is formatted.
namespace kavendra {

/// Turns the workbook at that path into items, sheet after sheet, with `sourceName` as their source. One line
/// a sheet with its header goes to the log.
/// Fails with LaunchError::invalidExcelFormat, or missingSupportedWorksheet when no sheet has the required
/// columns.
Result<ItemBlock> readWorkbookItems(const std::string& file, std::string sourceName,
                                    const LogLine& appendLogLine);

/// The same for a workbook in memory; `fileName` stands in messages.
Result<ItemBlock> readWorkbookBytes(std::string_view bytes, std::string_view fileName, std::string sourceName,
                                    const LogLine& appendLogLine);

} // namespace kavendra
