#include "platform/desktop/FileManagerService.h"

#include "platform/desktop/SessionBus.h"

namespace kavendra {

namespace {

constexpr int answerTimeoutMilliseconds = 2000;

GVariant* showFoldersArguments(const std::string& uri) {
    const char* const uris[] = {uri.c_str(), nullptr};
    constexpr const char* startupID = "";
    return g_variant_new("(^ass)", uris, startupID);
}

} // namespace

bool askFileManagerToShow(const std::string& uri) {
    const GObjectHandle<GDBusConnection> bus = sessionBus();
    if (!bus)
        return false;
    GError* error = nullptr;
    GVariant* answer = g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
        "org.freedesktop.FileManager1", "ShowFolders", showFoldersArguments(uri), nullptr,
        G_DBUS_CALL_FLAGS_NONE, answerTimeoutMilliseconds, nullptr, &error);
    const bool wasAsked = answer || g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT);
    g_clear_pointer(&answer, g_variant_unref);
    g_clear_error(&error);
    return wasAsked;
}

} // namespace kavendra
