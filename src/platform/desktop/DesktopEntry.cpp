#include "platform/desktop/DesktopEntry.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/KeyFile.h"
#include "platform/desktop/SessionBus.h"
#include "platform/desktop/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ranges>

namespace kavendra {

namespace {

/// How long to wait for an application, which may have to be started first.
constexpr int applicationTimeoutMilliseconds = 2000;

/// Gives a new process its own session and default signal handling, as Processes does. Runs in the new
/// process before exec: async-signal-safe functions only.
void detach(gpointer /*unused*/) {
    setsid();
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Returns the name of the application's service, empty when it has none: the id of the entry.
std::string busNameOf(GDesktopAppInfo* application) {
    const char* path = g_desktop_app_info_get_filename(application);
    if (!path || !g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE))
        return {};
    std::string_view name = lastPathComponent(path);
    name.remove_suffix(name.size() - name.rfind('.'));
    const std::string busName(name);
    return g_dbus_is_name(busName.c_str()) && !g_dbus_is_unique_name(busName.c_str()) ? busName
                                                                                      : std::string();
}

/// Returns the entry's command line after that of a terminal.
std::string execLineInTerminal(const Terminal& terminal, GKeyFile* entry) {
    const GText program(
        g_key_file_get_string(entry, G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
    std::string line = execLine(terminal.executable) + " ";
    if (!terminal.commandOption.empty())
        line += terminal.commandOption + " ";
    return line + (program ? program.get() : "");
}

} // namespace

DesktopEntry desktopEntry(const std::string& path) {
    if (containsNUL(path) || lowercasedExtension(path) != "desktop" || isDirectory(path))
        return nullptr;
    if (exists(path)) // read first with our limits, because GLib has none
        return DesktopEntry(readDesktopEntry(path) ? g_desktop_app_info_new_from_filename(path.c_str())
                                                   : nullptr);
    const bool isID = path.find('/') == std::string::npos;
    return DesktopEntry(isID ? g_desktop_app_info_new(path.c_str()) : nullptr);
}

bool opensAll(GDesktopAppInfo* application, const std::vector<std::string>& uris) {
    if (g_app_info_supports_uris(G_APP_INFO(application)))
        return true;
    const auto isFile = [](const std::string& uri) { return uri.starts_with("file:"); };
    return uris.empty() ||
           (g_app_info_supports_files(G_APP_INFO(application)) && std::ranges::all_of(uris, isFile));
}

bool startOnBus(GDesktopAppInfo* application, const std::vector<std::string>& uris,
                const std::string& token) {
    const std::string name = busNameOf(application);
    const GObjectHandle<GDBusConnection> bus = name.empty() ? nullptr : sessionBus();
    if (!bus)
        return false;
    std::string objectPath = "/" + name;
    std::ranges::replace(objectPath, '.', '/');
    std::ranges::replace(objectPath, '-', '_');

    GVariantBuilder parameters;
    g_variant_builder_init(&parameters, G_VARIANT_TYPE_TUPLE);
    if (!uris.empty()) {
        g_variant_builder_open(&parameters, G_VARIANT_TYPE_STRING_ARRAY);
        for (const std::string& uri : uris)
            g_variant_builder_add(&parameters, "s", uri.c_str());
        g_variant_builder_close(&parameters);
    }
    g_variant_builder_open(&parameters, G_VARIANT_TYPE_VARDICT);
    if (!token.empty())
        for (const char* key : {"activation-token", "desktop-startup-id"})
            g_variant_builder_add(&parameters, "{sv}", key, g_variant_new_string(token.c_str()));
    g_variant_builder_close(&parameters);
    GError* error = nullptr;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus.get(), name.c_str(), objectPath.c_str(), "org.freedesktop.Application",
        uris.empty() ? "Activate" : "Open", g_variant_builder_end(&parameters), nullptr,
        G_DBUS_CALL_FLAGS_NONE, applicationTimeoutMilliseconds, nullptr, &error));
    const bool succeeded = reply || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
    g_clear_error(&error);
    return succeeded;
}

Result<DesktopEntry> spawnableEntry(GDesktopAppInfo* application, std::string_view pathVariable) {
    const bool needsTerminal = g_desktop_app_info_get_boolean(application, G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    const char* path = g_desktop_app_info_get_filename(application);
    if (!path || (!needsTerminal && busNameOf(application).empty()))
        return DesktopEntry(G_DESKTOP_APP_INFO(g_object_ref(application)));
    const KeyFile entry = readDesktopEntry(path);
    if (!entry)
        return systemFailure(path, ENOENT);
    const auto set = [&](const char* key, const std::string& value) {
        g_key_file_set_string(entry.get(), G_KEY_FILE_DESKTOP_GROUP, key, value.c_str());
    };
    set(G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, "false");
    if (needsTerminal) {
        const std::optional<Terminal> terminal = installedTerminal(pathVariable);
        if (!terminal)
            return systemFailure("xdg-terminal-exec, x-terminal-emulator", ENOENT);
        set(G_KEY_FILE_DESKTOP_KEY_EXEC, execLineInTerminal(*terminal, entry.get()));
        set(G_KEY_FILE_DESKTOP_KEY_TERMINAL, "false");
    }
    DesktopEntry spawnable(g_desktop_app_info_new_from_keyfile(entry.get()));
    if (!spawnable)
        return systemFailure(path, ENOENT);
    return spawnable;
}

Result<void> spawn(GDesktopAppInfo* application, const std::vector<std::string>& uris,
                   const std::vector<std::string>& environment) {
    const GObjectHandle<GAppLaunchContext> context = launchContext(environment);
    GList* list = nullptr;
    for (const std::string& uri : std::views::reverse(uris)) // appending would walk the list each time
        list = g_list_prepend(list, const_cast<char*>(uri.c_str())); // not modified
    // Only the "as manager" variant calls a function in the new process. Without
    // G_SPAWN_DO_NOT_REAP_CHILD the program becomes a child of the init process, which reaps it.
    GError* error = nullptr;
    g_desktop_app_info_launch_uris_as_manager(application, list, context.get(), G_SPAWN_SEARCH_PATH, detach,
                                              nullptr, nullptr, nullptr, &error);
    g_list_free(list);
    return resultOf(error);
}

GObjectHandle<GAppLaunchContext> launchContext(const std::vector<std::string>& environment) {
    GObjectHandle<GAppLaunchContext> context(g_app_launch_context_new());
    char** inherited = g_listenv();
    for (char** name = inherited; *name; ++name)
        g_app_launch_context_unsetenv(context.get(), *name);
    g_strfreev(inherited);
    for (const std::string& entry : environment) {
        const std::size_t nameEnd = entry.find('=');
        if (nameEnd != 0 && nameEnd != std::string::npos)
            g_app_launch_context_setenv(context.get(), entry.substr(0, nameEnd).c_str(),
                                        entry.c_str() + nameEnd + 1);
    }
    return context;
}

Result<void> resultOf(GError* error) {
    if (!error)
        return {};
    Error failure{error->message};
    g_error_free(error);
    return std::unexpected(std::move(failure));
}

} // namespace kavendra
