#pragma once

#include <string>

namespace kavendra {

/// Whether `path` is an existing application directory: one whose path ends with ".app" in any letter case.
bool isApplicationDirectory(const std::string& path);

} // namespace kavendra
