#include "platform/Paths.h"

#include "base/Text.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace kavendra {

namespace {

std::string_view withoutTrailingSlashes(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/'))
        path.remove_suffix(1);
    return path;
}

std::string environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

/// Returns a user's home directory from the user database, empty when it has none. The empty name is the user
/// of this process.
std::string homeDirectoryOfUser(const std::string& name) {
    std::vector<char> storage(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (name.empty())
        getpwuid_r(getuid(), &entry, storage.data(), storage.size(), &found);
    else
        getpwnam_r(name.c_str(), &entry, storage.data(), storage.size(), &found);
    return found && found->pw_dir ? found->pw_dir : "";
}

} // namespace

bool containsNUL(std::string_view text) {
    return text.find('\0') != std::string_view::npos;
}

std::string_view lastPathComponent(std::string_view path) {
    path = withoutTrailingSlashes(path);
    if (path == "/")
        return path;
    return path.substr(path.rfind('/') + 1);
}

std::string_view parentPath(std::string_view path) {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return ".";
    return slash == 0 ? path.substr(0, 1) : withoutTrailingSlashes(path.substr(0, slash));
}

std::string lowercasedExtension(std::string_view path) {
    const std::string_view name = lastPathComponent(path);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return {};
    std::string extension(name.substr(dot + 1));
    for (char& letter : extension)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return extension;
}

std::string joinedPath(std::string_view directory, std::string_view name) {
    std::string path(directory);
    if (!path.empty() && !path.ends_with('/'))
        path += '/';
    return path.append(name);
}

std::string expandingTilde(std::string_view path) {
    if (!path.starts_with('~'))
        return std::string(path);
    const std::size_t nameEnd = std::min(path.find('/'), path.size());
    const std::string user(path.substr(1, nameEnd - 1));
    std::string home = user.empty() ? homeDirectory() : homeDirectoryOfUser(user);
    if (home.empty() || containsNUL(user))
        return std::string(path);
    if (home == "/" && nameEnd < path.size())
        home.clear();
    return home.append(path.substr(nameEnd));
}

std::string expandedPath(std::string_view text) {
    return expandingTilde(trimmed(text));
}

std::string homeDirectory() {
    std::string home = environmentVariable("HOME");
    if (home.empty())
        home = homeDirectoryOfUser({});
    return home.empty() ? "/" : home;
}

std::string temporaryDirectory() {
    const std::string directory = environmentVariable("TMPDIR");
    return directory.empty() ? "/tmp" : directory;
}

} // namespace kavendra
