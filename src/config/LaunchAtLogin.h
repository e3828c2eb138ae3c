#pragma once

#include "base/Result.h"
#include "platform/Desktop.h"

#include <string>
#include <string_view>

/// Launch at login. kavendra stores nothing about it; the desktop knows the status.
namespace kavendra {

enum class StartupRegistrationAction { registerApp, unregisterApp };

/// Returns the change to offer: remove the registration if it is enabled, else register.
StartupRegistrationAction requestedStartupAction(StartupRegistrationStatus status);

/// Returns the question of the confirmation dialog.
std::string_view confirmationMessage(StartupRegistrationAction action);

/// Result of a change.
struct StartupChange {
    StartupRegistrationStatus status;
    Result<std::string> message; ///< status message, or the failure to report
};

/// Registers or unregisters and asks the desktop for the new status, which decides the message. The failure
/// is LaunchError::startupRegistrationFailed.
StartupChange changeStartupRegistration(Desktop& desktop, StartupRegistrationAction action);

} // namespace kavendra
