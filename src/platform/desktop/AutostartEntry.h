#pragma once

#include "base/Result.h"
#include "platform/Desktop.h"

#include <string>

/// The entry that makes a freedesktop.org desktop start kavendra at login, a desktop entry in the XDG
/// autostart directory.
namespace kavendra {

/// Returns where the entry is: $XDG_CONFIG_HOME/autostart/kavendra.desktop.
std::string autostartEntryPath();

/// Returns what the entry at `entryPath` says. `executable`: the program that an entry would name.
StartupRegistrationStatus autostartStatus(const std::string& entryPath, const std::string& executable);

/// Returns the content of an entry that starts `executable`. Fails for a path that an entry cannot hold: one
/// that is not UTF-8 (EILSEQ) or has a control character in it (EINVAL).
Result<std::string> autostartEntry(const std::string& executable);

} // namespace kavendra
