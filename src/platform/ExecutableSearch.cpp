#include "platform/ExecutableSearch.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kavendra {

namespace {

constexpr std::array<std::string_view, 6> fallbackDirectories{
    "/opt/homebrew/bin", "/usr/local/bin", "/usr/bin", "/bin", "/usr/sbin", "/sbin"};

/// Returns the directories to search in, in order, none twice.
std::vector<std::string_view> searchDirectories(std::string_view searchPath) {
    std::vector<std::string_view> directories;
    const auto add = [&directories](std::string_view directory) {
        if (!directory.empty() && std::ranges::find(directories, directory) == directories.end())
            directories.push_back(directory);
    };
    while (!searchPath.empty()) {
        const std::size_t end = std::min(searchPath.find(':'), searchPath.size());
        add(searchPath.substr(0, end));
        searchPath.remove_prefix(std::min(end + 1, searchPath.size()));
    }
    std::ranges::for_each(fallbackDirectories, add);
    return directories;
}

} // namespace

std::optional<std::string> resolveExecutable(std::string_view name, std::string_view searchPath) {
    std::string path = expandedPath(name);
    if (path.empty())
        return std::nullopt;
    if (path.find('/') != std::string::npos)
        return isExecutableFile(path) ? std::optional(path) : std::nullopt;
    for (const std::string_view directory : searchDirectories(searchPath)) {
        const std::string candidate = joinedPath(directory, path);
        if (isExecutableFile(candidate))
            return absolutePath(candidate); // it may be started from elsewhere
    }
    return std::nullopt;
}

} // namespace kavendra
