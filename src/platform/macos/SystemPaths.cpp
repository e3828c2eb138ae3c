#include "platform/Paths.h"

#include <mach-o/dyld.h>

#include <cstdint>
#include <filesystem>

namespace kavendra {

std::string applicationSupportDirectory() {
    return joinedPath(homeDirectory(), "Library/Application Support");
}

std::string programDirectory() {
    return std::string(parentPath(executablePath()));
}

std::string executablePath() {
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size); // fails and sets the required size
    std::string path(size, '\0');
    if (size == 0 || _NSGetExecutablePath(path.data(), &size) != 0)
        return {};
    path.resize(path.find('\0'));
    std::error_code reason;
    return std::filesystem::canonical(path, reason).string();
}

} // namespace kavendra
