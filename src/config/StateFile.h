#pragma once

#include "base/Result.h"

#include <map>
#include <optional>
#include <string>

namespace kavendra {

/// Widths of table columns in points, by column identifier.
using ColumnWidths = std::map<std::string, double, std::less<>>;

/// What the program remembers between runs besides the settings.
struct LaunchState {
    ColumnWidths columnWidths;

    bool operator==(const LaunchState&) const = default;
};

std::string stateFilePath(const std::string& configurationDirectory);

/// Reads the state file (see decodedState). Fails with LaunchError::stateFileInvalid, whatever the reason.
Result<LaunchState> loadState(const std::string& configurationDirectory);

/// Replaces the state file. After a failure, with the system's reason, the old file is unchanged.
Result<void> writeState(const std::string& configurationDirectory, const LaunchState& state);

/// Returns the widths to store after a column was resized to `reported` points, rounded to a whole number,
/// halves away from zero. Returns nothing if that width is stored already.
std::optional<ColumnWidths> widthsAfterResize(const ColumnWidths& widths, const std::string& columnIdentifier,
                                              double reported);

} // namespace kavendra
