#pragma once

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

/// Stands in for the function of macOS, on Linux.
inline int _NSGetExecutablePath(char* buffer, std::uint32_t* size) {
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    const std::uint32_t needed = length < 0 ? 0 : static_cast<std::uint32_t>(length) + 1;
    if (*size < needed) {
        *size = needed;
        return -1;
    }
    *std::ranges::copy(std::string_view(path, needed - 1), buffer).out = '\0';
    return 0;
}
