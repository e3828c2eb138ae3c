#pragma once

#include "base/Result.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Widths of table columns in points, by column identifier.
using ColumnWidths = std::map<std::string, double, std::less<>>;

/// What the program remembers by itself.
struct LaunchState {
    ColumnWidths columnWidths;

    bool operator==(const LaunchState&) const = default;
};

std::string stateFilePath(const std::string& configurationDirectory);

/// Reads the state file; missing or null widths are none. Fails with LaunchError::stateFileInvalid, whatever
/// the reason.
Result<LaunchState> loadState(const std::string& configurationDirectory);

/// Writes the whole state file. Fails with the system's reason, the old file whole.
Result<void> writeState(const std::string& configurationDirectory, const LaunchState& state);

/// Returns the state that an older settings file, which also held the column widths, stands for; the empty
/// state when `settingsBytes` are no such file.
LaunchState stateOfOlderSettings(std::string_view settingsBytes);

/// Returns the widths to store when a column has been given the width `reported`, in points: whole numbers,
/// halves away from zero. Returns nothing when that width is stored already.
std::optional<ColumnWidths> widthsAfterResize(const ColumnWidths& widths, const std::string& columnIdentifier,
                                              double reported);

} // namespace kavendra
