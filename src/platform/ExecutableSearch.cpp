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

/// Returns the directories to search, in order and without duplicates. Empty entries of PATH are skipped:
/// they would mean the current directory.
std::vector<std::string_view> searchDirectories(std::string_view pathVariable) {
    std::vector<std::string_view> directories;
    const auto add = [&directories](std::string_view directory) {
        if (!directory.empty() && std::ranges::find(directories, directory) == directories.end())
            directories.push_back(directory);
    };
    while (!pathVariable.empty()) {
        const std::size_t end = std::min(pathVariable.find(':'), pathVariable.size());
        add(pathVariable.substr(0, end));
        pathVariable.remove_prefix(std::min(end + 1, pathVariable.size()));
    }
    std::ranges::for_each(fallbackDirectories, add);
    return directories;
}

} // namespace

std::optional<std::string> resolveExecutable(std::string_view name, std::string_view pathVariable) {
    std::string path = expandedPath(name);
    if (path.empty())
        return std::nullopt;
    if (path.find('/') != std::string::npos)
        return isExecutableFile(path) ? std::optional(path) : std::nullopt;
    for (const std::string_view directory : searchDirectories(pathVariable)) {
        const std::string candidate = joinedPath(directory, path);
        if (isExecutableFile(candidate))
            return absolutePath(candidate); // the program may be started in another directory
    }
    return std::nullopt;
}

} // namespace kavendra
