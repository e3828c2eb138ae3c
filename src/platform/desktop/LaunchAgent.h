#pragma once

#include "platform/Desktop.h"

#include <string>

/// The file that makes macOS start kavendra at login (launchd.plist(5)). Plain C++, tested on every system.
namespace kavendra {

/// Returns where the file is: ~/Library/LaunchAgents/kavendra.plist.
std::string launchAgentPath();

/// Returns what the file at `agentPath` says. `executable`: the program that it would name.
StartupRegistrationStatus launchAgentStatus(const std::string& agentPath, const std::string& executable);

/// Returns the content of a file that starts `executable`.
std::string launchAgent(const std::string& executable);

} // namespace kavendra
