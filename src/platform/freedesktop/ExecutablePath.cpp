#include "platform/ExecutablePath.h"

#include "platform/Files.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace kavendra {

namespace {

constexpr std::string_view deletedMark = " (deleted)";

/// Returns the file that runs, as the kernel tells it (proc(5)). When it was replaced, as by an upgrade, the
/// path that it had is where the new one is.
std::string runningFile() {
    std::error_code reason;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", reason).string();
    if (path.ends_with(deletedMark) && !exists(path))
        path.erase(path.size() - deletedMark.size());
    return path;
}

std::string_view variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string executablePath() {
    std::string file = runningFile();
    // An AppImage is mounted at $APPDIR only while it runs. Other programs inherit the variables from theirs,
    // so the running file has to be in it.
    const std::string_view image = variable("APPIMAGE");
    const std::string mount = std::string(variable("APPDIR")) + "/";
    const bool isOfImage = image.starts_with('/') && mount.size() > 1 && file.starts_with(mount);
    return isOfImage ? std::string(image) : file;
}

} // namespace kavendra
