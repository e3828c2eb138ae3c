#pragma once

#include <string>

namespace kavendra {

/// Returns the absolute path that starts this program again: the file that runs, or the AppImage that it was
/// started from. Empty when the system does not tell. Whether the file is still there is not looked at.
std::string executablePath();

} // namespace kavendra
