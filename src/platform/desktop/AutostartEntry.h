#pragma once

#include "base/Result.h"
#include "platform/Desktop.h"

#include <string>

/// Launch at login on a freedesktop.org desktop: a desktop entry in the autostart directory
/// (freedesktop.org, Desktop Application Autostart Specification).
namespace kavendra {

/// Returns the path of the entry in $XDG_CONFIG_HOME/autostart; it is named after the application id.
std::string autostartEntryPath();

/// Renames an entry registered by a version that had no application id; a newer entry takes precedence.
void replaceOldAutostartEntry();

/// Returns the status of the entry at `entryPath`; notFound if `executable`, the program to start, does not
/// exist.
StartupRegistrationStatus autostartStatus(const std::string& entryPath, const std::string& executable);

/// Returns the content of an entry that starts `executable`. Fails for paths that an entry cannot contain:
/// not UTF-8 (EILSEQ), or with a control character (EINVAL).
Result<std::string> autostartEntry(const std::string& executable);

} // namespace kavendra
