#include "platform/Paths.h"

#include <cstdlib>

namespace kavendra {

std::string applicationSupportDirectory() {
    // A relative path is invalid and must be ignored (XDG Base Directory Specification).
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured && *configured == '/')
        return configured;
    return joinedPath(homeDirectory(), ".config");
}

} // namespace kavendra
