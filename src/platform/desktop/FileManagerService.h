#pragma once

#include <string>

namespace kavendra {

/// Asks the file manager of the session to show a directory (`uri` is a file URL), over D-Bus: the interface
/// org.freedesktop.FileManager1 (freedesktop.org, "File Manager DBus Interface").
/// Returns false when the session has none or it refused; one that does not answer within two seconds has
/// been asked, and may be starting still, so that is true.
bool askFileManagerToShow(const std::string& uri);

} // namespace kavendra
