#pragma once

#include <string>

namespace kavendra {

/// The argument to measure the file named after it instead of running benchmarks.
inline constexpr const char* measureMemoryArgument = "--measure-memory-of";

/// Loads a CSV file and creates its search index, or loads a workbook (.xlsx). Prints the bytes of resident
/// memory that this added, the same at the peak, and the number of items. Returns the exit status.
int measureMemoryOf(const std::string& path);

} // namespace kavendra
