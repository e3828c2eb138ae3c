#pragma once

#include <string>

namespace kavendra {

/// The argument with which the program measures the file named after it instead of running benchmarks.
inline constexpr const char* measureMemoryArgument = "--measure-memory-of";

/// Loads a CSV file with its search index, or a workbook (.xlsx), and prints how many bytes of resident
/// memory that added, how many it added at the most, and how many items there are. Returns the exit status.
int measureMemoryOf(const std::string& path);

} // namespace kavendra
