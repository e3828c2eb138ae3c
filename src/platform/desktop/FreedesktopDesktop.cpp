#include "platform/desktop/FreedesktopDesktop.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/AppearancePortal.h"
#include "platform/desktop/AutostartEntry.h"
#include "platform/desktop/BuiltinCommand.h"
#include "platform/desktop/DesktopEntry.h"
#include "platform/desktop/QtDesktop.h"
#include "platform/desktop/SessionBus.h"
#include "platform/desktop/Terminal.h"
#include "platform/desktop/WindowThread.h"
#include "platform/desktop/X11Selection.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <memory>
#include <optional>

namespace kavendra {

namespace {

/// How long to wait for a file manager, which may have to be started first.
constexpr int fileManagerTimeoutMilliseconds = 2000;

/// How long to wait for the owner of a clipboard.
constexpr std::chrono::seconds clipboardTimeLimit{1};
/// How long to wait for it on the window's thread, so that what is typed next comes after the pasted text.
constexpr std::chrono::milliseconds clipboardPatience{50};
/// Of text read from a clipboard, in bytes. The search field takes 32767 UTF-16 units: three bytes at most
/// each.
constexpr std::size_t maximumClipboardText = std::size_t{128} << 10;

/// Returns the file URL of a path, which may be relative to the current directory.
std::string fileURL(const std::string& path) {
    const GObjectHandle<GFile> file(g_file_new_for_path(path.c_str()));
    const GText uri(g_file_get_uri(file.get()));
    return uri.get();
}

/// Returns the URIs of paths and addresses, nothing when one is neither an existing path nor an address.
std::optional<std::vector<std::string>> documentURIs(const std::vector<std::string>& documents) {
    std::vector<std::string> uris;
    for (const std::string& document : documents) {
        if (exists(document))
            uris.push_back(fileURL(document));
        else if (!containsNUL(document) && g_uri_is_valid(document.c_str(), G_URI_FLAGS_NONE, nullptr))
            uris.push_back(document);
        else
            return std::nullopt;
    }
    return uris;
}

/// Returns the default application for an address, null when there is none.
GObjectHandle<GAppInfo> defaultApplication(const std::string& uri) {
    const GText scheme(g_uri_parse_scheme(uri.c_str()));
    GObjectHandle<GAppInfo> application;
    if (scheme)
        application.reset(g_app_info_get_default_for_uri_scheme(scheme.get()));
    if (!application) {
        const GObjectHandle<GFile> file(g_file_new_for_uri(uri.c_str()));
        application.reset(g_file_query_default_handler(file.get(), nullptr, nullptr));
    }
    return application;
}

/// Calls ShowFolders of org.freedesktop.FileManager1 (freedesktop.org, "File Manager DBus Interface"); `uri`
/// is a file URL, `token` may be empty. Returns false when the session has no such service or it refused. No
/// answer in time counts as success: the file manager may still be starting.
bool showInFileManager(const std::string& uri, const std::string& token) {
    const GObjectHandle<GDBusConnection> bus = sessionBus();
    if (!bus)
        return false;
    const char* const uris[] = {uri.c_str(), nullptr};
    GError* error = nullptr;
    const GVariantHandle reply(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
        "org.freedesktop.FileManager1", "ShowFolders", g_variant_new("(^ass)", uris, token.c_str()), nullptr,
        G_DBUS_CALL_FLAGS_NONE, fileManagerTimeoutMilliseconds, nullptr, &error));
    const bool succeeded = reply || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
    g_clear_error(&error);
    return succeeded;
}

} // namespace

FreedesktopDesktop::FreedesktopDesktop(Processes& processes, Executor& executor)
    : m_processes(processes), m_executor(executor), m_tokens(executor),
      m_portal(std::make_unique<AppearancePortal>([this] { updatePalette(); })) {}

FreedesktopDesktop::~FreedesktopDesktop() = default;

/// Starts an application with files and addresses, given as URIs.
Result<void> FreedesktopDesktop::start(GDesktopAppInfo* application, const std::vector<std::string>& uris) {
    const std::string token = m_tokens.next();
    if (startOnBus(application, uris, token))
        return {};
    const Result<DesktopEntry> entry = spawnableEntry(application, m_processes.variable("PATH"));
    if (!entry)
        return std::unexpected(entry.error());
    std::vector<std::string> environment = m_processes.programEnvironment();
    std::ranges::move(environmentWithToken(token), std::back_inserter(environment));
    return onWindowThread(m_executor, [&] { return spawn(entry->get(), uris, environment); });
}

/// Opens an address with its default application.
Result<void> FreedesktopDesktop::openURI(const std::string& uri) {
    const GObjectHandle<GAppInfo> application = defaultApplication(uri);
    if (application && G_IS_DESKTOP_APP_INFO(application.get()))
        return start(G_DESKTOP_APP_INFO(application.get()), {uri});
    // In a sandbox there may be no application but a portal, which this function calls.
    const GObjectHandle<GAppLaunchContext> context =
        onWindowThread(m_executor, [&] { return launchContext(m_processes.programEnvironment()); });
    GError* error = nullptr;
    g_app_info_launch_default_for_uri(uri.c_str(), context.get(), &error);
    return resultOf(error);
}

Result<void> FreedesktopDesktop::openURL(const std::string& url) {
    if (containsNUL(url))
        return systemFailure(url, EINVAL);
    return openURI(url);
}

Result<void> FreedesktopDesktop::openFile(const std::string& path) {
    if (!exists(path))
        return systemFailure(path, ENOENT);
    return openURI(fileURL(path));
}

bool FreedesktopDesktop::isApplication(const std::string& path) {
    return isApplicationDirectory(path) || desktopEntry(path);
}

Result<void> FreedesktopDesktop::openURLWithApplication(const std::string& url,
                                                        const std::string& applicationPath) {
    const DesktopEntry application = desktopEntry(applicationPath);
    if (!application)
        return systemFailure(applicationPath, ENOENT);
    // GLib would start an application that takes no addresses without the address.
    if (!g_app_info_supports_uris(G_APP_INFO(application.get())))
        return systemFailure(applicationPath, ENOTSUP);
    return start(application.get(), {url});
}

bool FreedesktopDesktop::canStartApplication(const std::string& path,
                                             const std::vector<std::string>& documents) {
    const DesktopEntry application = desktopEntry(path);
    if (!application)
        return false;
    const auto uris = documentURIs(documents);
    return uris && opensAll(application.get(), *uris);
}

Result<void> FreedesktopDesktop::startApplication(const std::string& path,
                                                  const std::vector<std::string>& documents) {
    const DesktopEntry application = desktopEntry(path);
    const auto uris = documentURIs(documents);
    if (!application || !uris)
        return systemFailure(path, ENOENT);
    return start(application.get(), *uris);
}

std::optional<std::string> FreedesktopDesktop::builtinCommand(const std::string& command) {
    return builtinCommandHere(command, m_processes.variable("PATH"), m_executor);
}

Result<void> FreedesktopDesktop::showDirectory(const std::string& path) {
    if (!isDirectory(path))
        return systemFailure(path, ENOTDIR);
    const std::string uri = fileURL(path);
    if (showInFileManager(uri, m_tokens.next()))
        return {};
    return openURI(uri);
}

Result<ProgramOutcome> FreedesktopDesktop::openTerminal(const std::string& directory) {
    const std::optional<Terminal> terminal = installedTerminal(m_processes.variable("PATH"));
    if (!terminal)
        return systemFailure("xdg-terminal-exec, x-terminal-emulator", ENOENT);
    if (auto started = m_processes.start(terminal->executable, {}, directory, activationEnvironment());
        !started)
        return std::unexpected(std::move(started.error()));
    return ProgramOutcome{.succeeded = true, .standardError = {}};
}

std::vector<std::string> FreedesktopDesktop::activationEnvironment() {
    return environmentWithToken(m_tokens.next());
}

void FreedesktopDesktop::copyText(const std::string& text) {
    putOnClipboard(text);
}

void FreedesktopDesktop::readText(Clipboard clipboard, std::function<void(const std::string&)> received) {
    if (!isForeignX11Clipboard(clipboard))
        return received(clipboardText(clipboard));
    const X11Connection server = connectToX11();
    if (!server)
        return received({});
    const char* const selection = clipboard == Clipboard::copied ? "CLIPBOARD" : "PRIMARY";
    runBriefly(
        m_executor, clipboardPatience,
        [server, selection] {
            return readX11Selection(server, selection, clipboardTimeLimit, maximumClipboardText);
        },
        std::move(received));
}

void FreedesktopDesktop::setAppearance(Appearance appearance) {
    m_appearance = appearance;
    updatePalette();
}

void FreedesktopDesktop::updatePalette() {
    const AppearancePreferences& preferences = m_portal->preferences();
    m_prefersReducedMotion = preferences.reducedMotion || !preferences.animations;
    if (m_appearance == Appearance::system)
        applyPreference(preferences.appearance, preferences.highContrast);
    else
        applyAppearance(m_appearance, preferences.highContrast);
}

StartupRegistrationStatus FreedesktopDesktop::launchAtLoginStatus() {
    replaceOldAutostartEntry();
    return autostartStatus(autostartEntryPath(), executablePath());
}

Result<void> FreedesktopDesktop::enableLaunchAtLogin() {
    const std::string executable = executablePath();
    if (!isExecutableFile(executable))
        return {}; // the status is notFound
    const auto entry = autostartEntry(executable);
    if (!entry)
        return std::unexpected(entry.error());
    const std::string path = autostartEntryPath();
    if (const auto created = createDirectories(std::string(parentPath(path))); !created)
        return created;
    return writeFileAtomically(path, *entry);
}

Result<void> FreedesktopDesktop::disableLaunchAtLogin() {
    return removeFile(autostartEntryPath());
}

} // namespace kavendra
