#pragma once

#include "base/Result.h"

#include <string>

namespace kavendra {

/// Makes sure that there is a directory which only this user can enter (mode 0700), and returns its path:
/// that is `path`, or, when something else has that name (a link, a file, a directory of another user), a new
/// directory beside it whose name nobody can guess. Fails with the system's reason.
Result<std::string> privateDirectory(const std::string& path);

} // namespace kavendra
