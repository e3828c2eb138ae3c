#pragma once

#include "base/Result.h"
#include "platform/desktop/GLibHandles.h"

#include <gio/gdesktopappinfo.h>

#include <string>
#include <string_view>
#include <vector>

/// Applications as desktop entries (freedesktop.org, "Desktop Entry Specification").
namespace kavendra {

using DesktopEntry = GObjectHandle<GDesktopAppInfo>;

/// Returns the application with the path of a desktop entry, or with the id of an installed one
/// ("firefox.desktop"). Null when there is no usable one.
DesktopEntry desktopEntry(const std::string& path);

/// Whether the application opens all these files and addresses, given as URIs.
bool opensAll(GDesktopAppInfo* application, const std::vector<std::string>& uris);

/// Starts the application through its service on the session bus (Desktop Entry Specification, "D-Bus
/// Activation"). Returns false when the entry has no such service, or the bus does not start it. No answer
/// within two seconds counts as success: the application may still be starting.
/// `token` lets it bring its window to the front; it may be empty.
bool startOnBus(GDesktopAppInfo* application, const std::vector<std::string>& uris, const std::string& token);

/// Returns the entry whose program is to be spawned: the application's own, or one that runs it in a
/// terminal. Never has a service. Fails when no terminal is installed. `pathVariable` is a value of $PATH.
Result<DesktopEntry> spawnableEntry(GDesktopAppInfo* application, std::string_view pathVariable);

/// Spawns the program of an entry in a session of its own, with exactly this environment (entries of the form
/// NAME=value) and what GIO adds. Reads the environment of this process. Fails with GIO's reason.
Result<void> spawn(GDesktopAppInfo* application, const std::vector<std::string>& uris,
                   const std::vector<std::string>& environment);

/// Returns a launch context with exactly this environment.
GObjectHandle<GAppLaunchContext> launchContext(const std::vector<std::string>& environment);

/// Returns the result of a GLib function that sets `error` when it fails; frees the error.
Result<void> resultOf(GError* error);

} // namespace kavendra
