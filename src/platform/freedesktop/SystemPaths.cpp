#include "platform/Files.h"
#include "platform/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace kavendra {

namespace {

constexpr std::string_view deletedSuffix = " (deleted)";

/// Returns the path of the running file from proc(5). The kernel marks a file that was removed; an upgrade
/// has put the new version at the same path.
std::string runningFile() {
    std::error_code reason;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", reason).string();
    if (path.ends_with(deletedSuffix) && !exists(path))
        path.erase(path.size() - deletedSuffix.size());
    return path;
}

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string applicationSupportDirectory() {
    // A relative path is invalid and must be ignored (XDG Base Directory Specification).
    const std::string_view configured = variable("XDG_CONFIG_HOME");
    if (configured.starts_with('/'))
        return std::string(configured);
    return joinedPath(homeDirectory(), ".config");
}

std::string programDirectory() {
    return std::string(parentPath(runningFile()));
}

std::string executablePath() {
    std::string file = runningFile();
    // An AppImage is mounted at $APPDIR only while it runs. Programs that another AppImage starts inherit its
    // variables, so the running file must be below $APPDIR.
    const std::string_view image = variable("APPIMAGE");
    const std::string mount = std::string(variable("APPDIR")) + "/";
    const bool isOfImage = image.starts_with('/') && mount.size() > 1 && file.starts_with(mount);
    return isOfImage ? std::string(image) : file;
}

} // namespace kavendra
