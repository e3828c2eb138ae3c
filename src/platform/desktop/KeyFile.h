#pragma once

#include "platform/desktop/GLibHandles.h"

#include <memory>
#include <string>

/// Desktop entries as key files (freedesktop.org, "Desktop Entry Specification").
namespace kavendra {

struct GKeyFileRelease {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, GKeyFileRelease>;

/// Reads a desktop entry of at most 1 MiB. Returns null when there is no readable entry; waits for no pipe.
KeyFile readDesktopEntry(const std::string& path);

/// Returns the beginning of an Exec key that starts the program `executable`, a path in UTF-8; arguments may
/// follow after a space.
std::string execLine(const std::string& executable);

} // namespace kavendra
