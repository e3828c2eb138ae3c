#pragma once

#include "config/LaunchSettings.h"

#include <cstddef>
#include <string>

/// Texts below the table.
namespace kavendra {

/// Returns the status message after a load of `itemCount` items.
std::string loadedMessage(std::size_t itemCount, const std::string& dataDirectory);

/// Returns the rules for data files and the two directories, on one line.
std::string debugSummary(const LaunchSettings& settings);

} // namespace kavendra
