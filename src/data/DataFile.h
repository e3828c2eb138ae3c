#pragma once

#include "base/Result.h"
#include "data/ItemList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// How a data file is read.
enum class DataFileKind : std::uint8_t { csv, workbook };

/// Returns the kind of a file by the extension of its name, nothing for a file that is no data file.
std::optional<DataFileKind> dataFileKind(std::string_view fileName);

/// A file with launch items.
struct DataFile {
    std::string path;
    std::string name; ///< the last component of the path; used in messages
    DataFileKind kind = DataFileKind::csv;
};

/// Returns the data file at `path`. A file without a data file's extension is read as CSV.
DataFile dataFileAt(std::string path);

/// Result of reading one data file.
struct DataFileReading {
    std::vector<std::string> logLines; ///< header lines for the log, also when reading failed
    Result<ItemBlock> items;
};

/// Returns the failure of a data file: LaunchError::invalidExcelFormat or invalidCSVFormat with
/// "NAME: detail".
std::unexpected<Error> invalidDataFile(std::string_view fileName, std::string_view detail);

/// Returns the failure of a load that ran out of memory at this data file.
std::unexpected<Error> notEnoughMemory(std::string_view fileName);

} // namespace kavendra
