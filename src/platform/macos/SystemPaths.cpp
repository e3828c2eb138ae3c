#include "platform/Paths.h"

namespace kavendra {

std::string applicationSupportDirectory() {
    return joinedPath(homeDirectory(), "Library/Application Support");
}

} // namespace kavendra
