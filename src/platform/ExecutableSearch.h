#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns the path of the program `name`, nothing when there is none. White space around the name is removed
/// and a leading tilde expanded. A name with a "/" is a path and is returned unchanged if it is executable;
/// any other name is searched in the directories of `pathVariable` (a value of $PATH), then in the usual
/// directories of programs, and the result is absolute.
std::optional<std::string> resolveExecutable(std::string_view name, std::string_view pathVariable);

} // namespace kavendra
