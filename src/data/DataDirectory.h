#pragma once

#include "base/Result.h"
#include "data/DataFile.h"

#include <string>
#include <string_view>
#include <vector>

/// The directory whose CSV files and workbooks become the item list.
namespace kavendra {

/// Data files whose name begins with this are not read.
inline constexpr std::string_view ignorePrefix = "_";

/// Creates the directory and its missing parents if nothing exists at the path.
/// Fails with the system's reason.
Result<void> ensureDataDirectory(const std::string& path);

/// Returns the data files directly in the directory, sorted by name by the rules of the locale; items are
/// shown in this order. Fails with LaunchError::dataDirectoryNotFound, or with the system's
/// reason.
Result<std::vector<DataFile>> listDataFiles(const std::string& path);

/// Writes "Sample.csv", a small data file to start from, into `directory`; creates the directory if needed.
/// Keeps an existing file of that name. Fails with the system's reason.
Result<void> writeSampleDataFile(const std::string& directory);

} // namespace kavendra
