#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// Returns the path of the program that `name` (typed: trimmed, a tilde expanded) stands for, nothing when
/// there is none. A name with a "/" is a path and is not searched; another one is looked for in the
/// directories of `searchPath` (in the form of $PATH), then in the directories where programs usually are.
std::optional<std::string> resolveExecutable(std::string_view name, std::string_view searchPath);

} // namespace kavendra
