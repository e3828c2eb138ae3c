#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The file or directory that a text names. Each call looks at the file system anew; a path that comes back
/// is absolute, so that no program takes it for an option.
namespace kavendra {

/// Returns the path that `text` is as typed by a person (see expandedPath), nothing when nothing exists
/// there.
std::optional<std::string> existingPathOf(std::string_view text);

/// Returns the path that the text of the search field names, with or without quotes around it; nothing when
/// nothing exists there.
std::optional<std::string> typedPathOf(std::string_view searchText);

/// Returns the search path when it is no directory.
std::optional<std::string> typedPathFileOf(std::string_view searchText);

/// Returns the search path when it is a directory, else the directory that it is in.
std::optional<std::string> typedPathDirectoryOf(std::string_view searchText);

} // namespace kavendra
