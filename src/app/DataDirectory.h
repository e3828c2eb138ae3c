#pragma once

#include "base/LogLine.h"
#include "base/Result.h"
#include "data/ItemList.h"

#include <string>
#include <string_view>
#include <vector>

/// The directory whose CSV files and workbooks become the item list.
namespace kavendra {

/// Data files whose name begins with this are not read.
inline constexpr std::string_view ignorePrefix = "_";

/// No table of launch items that people keep comes near this size; a larger data file is not read.
inline constexpr std::size_t maximumDataFileSize = std::size_t{1} << 30;

/// Creates the directory with all that is missing above it when nothing stands at the path.
/// Fails with the system's reason.
Result<void> ensureDataDirectory(const std::string& path);

/// Returns the paths of the data files directly in the directory, in the order in which they are shown.
/// Fails with LaunchError::dataDirectoryNotFound, or with the system's reason.
Result<std::vector<std::string>> listDataFiles(const std::string& path);

/// Reads every data file of the directory, behind the items of `builtinFile` when `includeBuiltin` is set.
/// The first file that fails fails the whole load with its error; a file also fails when all files up to it
/// hold more than one load may (see LoadLimits.h).
Result<ItemList> loadAllItems(const std::string& path, bool includeBuiltin, const std::string& builtinFile,
                              const LogLine& appendLogLine);

/// Reads the built-in items; there are none when the file does not exist. Fails with the reader's error.
Result<ItemBlock> loadBuiltinItems(const std::string& builtinFile, const LogLine& appendLogLine);

/// Reads one data file by its kind. Fails with the reader's error, or when there is not enough memory.
Result<ItemBlock> loadDataFile(const std::string& file, std::string sourceName, const LogLine& appendLogLine);

} // namespace kavendra
