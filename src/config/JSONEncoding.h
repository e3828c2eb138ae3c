#pragma once

#include "config/LaunchSettings.h"
#include "config/StateFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Settings and state as JSON (RFC 8259): one UTF-8 object, indented, with the keys of every object in
/// ascending order. This is the only place that uses the JSON library.
namespace kavendra {

/// Size limit for a settings or state file; a larger one is invalid.
inline constexpr std::size_t maximumJSONFileSize = std::size_t{1} << 20;

/// Nesting limit for a settings or state file; a deeper one is invalid.
inline constexpr int maximumJSONDepth = 32;

/// Returns the settings, nothing if `json` is invalid. Optional keys that are missing or null get their
/// defaults; unknown keys are ignored.
std::optional<LaunchSettings> decodedSettings(std::string_view json);

/// Returns the state, nothing if `json` is invalid. Missing or null widths are empty.
std::optional<LaunchState> decodedState(std::string_view json);

/// Returns the column widths that older versions kept in the settings; none if `json` has no valid ones.
LaunchState stateOfOlderSettings(std::string_view json);

/// Both return nothing if a string is not UTF-8.
std::optional<std::string> encoded(const LaunchSettings& settings);
std::optional<std::string> encoded(const LaunchState& state);

} // namespace kavendra
