#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>

/// The failures of reading data files. A failure of the system is passed on with the system's own reason.
namespace kavendra::LaunchError {

/// `path`: the data directory as written in the settings.
inline std::unexpected<Error> dataDirectoryNotFound(std::string_view path) {
    return std::unexpected(Error{std::string("Data directory not found: ").append(path)});
}

/// `detail`: the file name, ": " and the first missing column.
inline std::unexpected<Error> missingRequiredColumns(std::string_view detail) {
    return std::unexpected(Error{std::string("CSV is missing required columns: ").append(detail)});
}

inline std::unexpected<Error> missingSupportedWorksheet(std::string_view fileName) {
    return std::unexpected(Error{std::string("Excel workbook has no supported sheet: ").append(fileName)});
}

inline std::unexpected<Error> invalidCSVFormat(std::string_view detail) {
    return std::unexpected(Error{std::string("Invalid CSV format: ").append(detail)});
}

inline std::unexpected<Error> invalidExcelFormat(std::string_view detail) {
    return std::unexpected(Error{std::string("Invalid Excel format: ").append(detail)});
}

} // namespace kavendra::LaunchError
