#include "platform/desktop/BuiltinCommand.h"

#include "platform/ExecutableSearch.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/DesktopEntry.h"
#include "platform/desktop/Terminal.h"

#include <chrono>

namespace kavendra {

namespace {

/// Returns a path with "~" for the home directory, as people write it.
std::string abbreviated(const std::string& path) {
    const std::string home = homeDirectory() + "/";
    return path.starts_with(home) ? "~/" + path.substr(home.size()) : path;
}

/// Returns a directory of the user, by its usual name if the user has not chosen one. Nothing if it is
/// switched off: xdg-user-dirs then names the home directory.
std::optional<std::string> userDirectory(GUserDirectory kind, const char* usualName) {
    g_reload_user_special_dirs_cache(); // the person may have changed them
    const char* const chosen = g_get_user_special_dir(kind);
    const std::string path = chosen ? chosen : joinedPath(homeDirectory(), usualName);
    return absolutePath(path) == absolutePath(homeDirectory()) ? std::nullopt
                                                               : std::optional(abbreviated(path));
}

std::optional<std::string> idOf(GAppInfo* application) {
    const GObjectHandle<GAppInfo> owned(application);
    const char* const id = application ? g_app_info_get_id(application) : nullptr;
    return id ? std::optional<std::string>(id) : std::nullopt;
}

/// Returns what a word stands for, nothing when this machine does not have it.
std::optional<std::string> valueOf(std::string_view word, std::string_view pathVariable) {
    if (word == "documents")
        return userDirectory(G_USER_DIRECTORY_DOCUMENTS, "Documents");
    if (word == "downloads")
        return userDirectory(G_USER_DIRECTORY_DOWNLOAD, "Downloads");
    if (word == "configuration")
        return abbreviated(applicationSupportDirectory());
    if (word == "data")
        return abbreviated(g_get_user_data_dir());
    if (word == "browser")
        return idOf(g_app_info_get_default_for_uri_scheme("https"));
    if (word == "files")
        return idOf(g_app_info_get_default_for_type("inode/directory", FALSE));
    if (word == "terminal")
        if (const auto terminal = installedTerminal(pathVariable))
            return std::string(lastPathComponent(terminal->executable));
    return std::nullopt;
}

/// Replaces a word at the beginning.
std::optional<std::string> expandedWord(const std::string& command, std::string_view pathVariable) {
    const std::size_t end = command.find('}');
    if (!command.starts_with("${") || end == std::string::npos)
        return command;
    const auto value = valueOf(std::string_view(command).substr(2, end - 2), pathVariable);
    return value ? std::optional(*value + command.substr(end + 1)) : std::nullopt;
}

/// How long to wait for the file system of a path.
constexpr std::chrono::milliseconds pathTimeLimit{300};

bool existsOrHangs(const std::string& path, Executor& executor) {
    return askAll(executor, {[path] { return exists(path); }}, pathTimeLimit).front().value_or(true);
}

bool canBeLaunched(const std::string& command, std::string_view pathVariable, Executor& executor) {
    if (lowercasedExtension(command) == "desktop") {
        const DesktopEntry application = desktopEntry(command);
        return application && g_desktop_app_info_get_show_in(application.get(), nullptr);
    }
    const std::string path = expandedPath(command);
    return path.find('/') == std::string::npos ? resolveExecutable(path, pathVariable).has_value()
                                               : existsOrHangs(path, executor);
}

} // namespace

std::optional<std::string> builtinCommandHere(const std::string& command, std::string_view pathVariable,
                                              Executor& executor) {
    auto expanded = expandedWord(command, pathVariable);
    return expanded && canBeLaunched(*expanded, pathVariable, executor) ? expanded : std::nullopt;
}

} // namespace kavendra
