#include "platform/desktop/AutostartEntry.h"

#include "base/TextDecoding.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/KeyFile.h"

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

/// Returns a boolean of the entry, nothing if it is missing or not a boolean.
std::optional<bool> flag(GKeyFile* entry, const char* key) {
    GError* error = nullptr;
    const bool value = g_key_file_get_boolean(entry, group, key, &error);
    if (!error)
        return value;
    g_error_free(error);
    return std::nullopt;
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
    const KeyFile entry = readDesktopEntry(oldPath);
    if (!entry)
        return;
    g_key_file_set_string(entry.get(), group, G_KEY_FILE_DESKTOP_KEY_ICON, KAVENDRA_APPLICATION_ID);
    // A failure keeps the old entry, which still starts the program, until the next start.
    if (exists(path) || writeFileAtomically(path, contentOf(entry.get()))) {
        [[maybe_unused]] const auto removed = removeFile(oldPath);
    }
}

StartupRegistrationStatus autostartStatus(const std::string& entryPath, const std::string& executable) {
    if (!isExecutableFile(executable))
        return StartupRegistrationStatus::notFound;
    const KeyFile entry = readDesktopEntry(entryPath);
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
