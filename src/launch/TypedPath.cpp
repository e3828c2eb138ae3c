#include "launch/TypedPath.h"

#include "base/Text.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace kavendra {

namespace {

std::string_view withoutQuotes(std::string_view text) {
    constexpr std::string_view quotes = "\"'";
    const std::size_t begin = std::min(text.find_first_not_of(quotes), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(quotes) + 1);
}

} // namespace

std::optional<std::string> existingPathOf(std::string_view text) {
    const std::string path = expandedPath(text);
    if (path.empty() || !exists(path))
        return std::nullopt;
    return absolutePath(path);
}

std::optional<std::string> searchPathOf(std::string_view searchText) {
    return existingPathOf(withoutQuotes(trimmed(searchText)));
}

std::optional<std::string> searchPathFileOf(std::string_view searchText) {
    auto path = searchPathOf(searchText);
    return path && !isDirectory(*path) ? path : std::nullopt;
}

std::optional<std::string> searchPathDirectoryOf(std::string_view searchText) {
    auto path = searchPathOf(searchText);
    if (!path || isDirectory(*path))
        return path;
    return std::string(parentPath(*path));
}

} // namespace kavendra
