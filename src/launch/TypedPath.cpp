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

std::optional<std::string> typedPathOf(std::string_view searchText) {
    return existingPathOf(withoutQuotes(trimmed(searchText)));
}

std::optional<std::string> typedPathFileOf(std::string_view searchText) {
    auto path = typedPathOf(searchText);
    return path && !isDirectory(*path) ? path : std::nullopt;
}

std::optional<std::string> typedPathDirectoryOf(std::string_view searchText) {
    auto path = typedPathOf(searchText);
    if (!path || isDirectory(*path))
        return path;
    return std::string(parentPath(*path));
}

} // namespace kavendra
