#pragma once

#include "base/Result.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <optional>
#include <string>

/// The form that the settings and the state file share: one UTF-8 JSON object (RFC 8259), indented, the keys
/// of every object ascending.
namespace kavendra {

/// No settings or state file that a person keeps comes near this size; a larger one is not read.
inline constexpr std::size_t maximumJSONFileSize = std::size_t{1} << 20;

/// No settings or state file nests deeper than this by far; a deeper one is invalid.
inline constexpr int maximumJSONDepth = 32;

/// Returns the object that the bytes hold, or nothing when they are not one JSON object.
std::optional<nlohmann::json> parseJSONObject(std::string_view bytes);

/// Reads a file and returns its object, or nothing for whatever reason it has none.
std::optional<nlohmann::json> readJSONObject(const std::string& path);

/// Replaces the file. Fails with the system's reason, or when a text is not UTF-8.
Result<void> writeJSONObject(const std::string& path, const nlohmann::json& object);

} // namespace kavendra
