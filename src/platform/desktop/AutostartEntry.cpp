#include "platform/desktop/AutostartEntry.h"

#include "base/TextDecoding.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/GLibHandles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>

namespace kavendra {

namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* gnomeEnabledKey = "X-GNOME-Autostart-enabled";
/// Keys that settings programs set to false to disable an entry, instead of setting Hidden.
constexpr std::array enabledKeys{gnomeEnabledKey, "X-MATE-Autostart-enabled"};

/// Size limit for a desktop entry.
constexpr std::size_t maximumEntrySize = std::size_t{1} << 20;

struct GKeyFileRelease {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, GKeyFileRelease>;

/// Returns null when there is no readable entry.
KeyFile readEntry(const std::string& path) {
    const auto content = readFile(path, maximumEntrySize);
    if (!content)
        return nullptr;
    KeyFile entry(g_key_file_new());
    const bool isEntry =
        g_key_file_load_from_data(entry.get(), content->data(), content->size(), G_KEY_FILE_NONE, nullptr) &&
        g_key_file_has_group(entry.get(), group);
    return isEntry ? std::move(entry) : nullptr;
}

/// Returns a boolean of the entry, nothing if it is missing or not a boolean.
std::optional<bool> flag(GKeyFile* entry, const char* key) {
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(entry, group, key, &error);
    if (!error)
        return value;
    g_error_free(error);
    return std::nullopt;
}

/// Quotes an argument for the Exec key: in double quotes, special characters escaped by a backslash, and "%",
/// which begins a field code, doubled.
std::string quotedArgument(std::string_view argument) {
    std::string quoted = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").contains(character))
            quoted += '\\';
        if (character == '%')
            quoted += '%';
        quoted += character;
    }
    return quoted + '"';
}

/// Returns the value of the Exec key. The program name must not contain "=", and GLib searches for the
/// program before it replaces "%%" by "%": a path with one of them is started by a shell.
std::string execLine(const std::string& executable) {
    const std::string program = quotedArgument(executable);
    return executable.find_first_of("=%") == std::string::npos
               ? program
               : "sh -c " + quotedArgument("exec \"$0\"") + " " + program;
}

std::string contentOf(GKeyFile* entry) {
    gsize size = 0;
    const GText content(g_key_file_to_data(entry, &size, nullptr));
    return {content.get(), size};
}

bool isControlCharacter(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

} // namespace

std::string autostartEntryPath() {
    return joinedPath(applicationSupportDirectory(), "autostart/" KAVENDRA_APPLICATION_ID ".desktop");
}

void replaceOldAutostartEntry() {
    const std::string path = autostartEntryPath();
    const std::string oldPath = joinedPath(parentPath(path), "kavendra.desktop");
    const KeyFile entry = readEntry(oldPath);
    if (!entry)
        return;
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_ICON, KAVENDRA_APPLICATION_ID);
    // A failure keeps the old entry, which still starts the program, until the next start.
    if (exists(path) || writeFileAtomically(path, contentOf(entry.get())))
        static_cast<void>(removeFile(oldPath));
}

StartupRegistrationStatus autostartStatus(const std::string& entryPath, const std::string& executable) {
    if (!isExecutableFile(executable))
        return StartupRegistrationStatus::notFound;
    const KeyFile entry = readEntry(entryPath);
    if (!entry)
        return StartupRegistrationStatus::notRegistered;
    const bool isOff =
        flag(entry.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN) == true ||
        std::ranges::any_of(enabledKeys, [&](const char* key) { return flag(entry.get(), key) == false; });
    return isOff ? StartupRegistrationStatus::requiresApproval : StartupRegistrationStatus::enabled;
}

Result<std::string> autostartEntry(const std::string& executable) {
    if (!isValidUTF8(executable))
        return systemFailure(executable, EILSEQ);
    if (std::ranges::any_of(executable, isControlCharacter))
        return systemFailure(executable, EINVAL);
    const KeyFile entry(g_key_file_new());
    const auto set = [&entry](const char* key, const std::string& value) {
        g_key_file_set_string(entry.get(), group, key, value.c_str());
    };
    set(G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    set(G_KEY_FILE_DESKTOP_KEY_NAME, "kavendra");
    set(G_KEY_FILE_DESKTOP_KEY_COMMENT, "Start anything by a few words of its name");
    set(G_KEY_FILE_DESKTOP_KEY_EXEC, execLine(executable));
    set(G_KEY_FILE_DESKTOP_KEY_ICON, KAVENDRA_APPLICATION_ID);
    g_key_file_set_boolean(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_TERMINAL, FALSE);
    g_key_file_set_boolean(entry.get(), group, gnomeEnabledKey, TRUE);
    return contentOf(entry.get());
}

} // namespace kavendra
