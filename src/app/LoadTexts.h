#pragma once

#include <cstddef>
#include <string>

namespace kavendra {

/// Returns what a finished load reports: how many items there are, or where none were found.
std::string loadedMessage(std::size_t itemCount, const std::string& dataDirectory);

/// Returns one line that tells the rules for data files and where the files are.
std::string debugSummaryText(const std::string& dataDirectory, const std::string& logDirectory);

} // namespace kavendra
