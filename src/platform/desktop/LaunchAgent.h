#pragma once

#include "platform/Desktop.h"

#include <string>

/// Launch at login on macOS: a launch agent (launchd.plist(5)). Needs no macOS headers, so it is tested on
/// every system.
namespace kavendra {

/// Returns the path of the agent: in ~/Library/LaunchAgents; it is named after the application id.
std::string launchAgentPath();

/// Returns the status of the agent at `agentPath`; notFound if `executable`, the program to start, does not
/// exist.
StartupRegistrationStatus launchAgentStatus(const std::string& agentPath, const std::string& executable);

/// Returns the content of an agent that starts `executable`.
std::string launchAgent(const std::string& executable);

} // namespace kavendra
