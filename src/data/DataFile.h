#pragma once

#include "base/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// How a data file is read.
enum class DataFileKind : std::uint8_t { csv, workbook };

/// Returns the kind of a file by the extension of its name, nothing for a file that is no data file.
std::optional<DataFileKind> dataFileKind(std::string_view fileName);

/// A file with launch items.
struct DataFile {
    std::string path;
    std::string name; ///< the last component of the path; stands in messages
    DataFileKind kind = DataFileKind::csv;
};

/// Returns the failure of a data file: LaunchError::invalidExcelFormat or invalidCSVFormat with
/// "NAME: detail".
std::unexpected<Error> invalidDataFile(std::string_view fileName, std::string_view detail);

/// Returns the failure of a load whose memory ran out at the data file.
std::unexpected<Error> notEnoughMemory(std::string_view fileName);

} // namespace kavendra
