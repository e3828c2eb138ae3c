#pragma once

#include "base/Result.h"
#include "platform/Desktop.h"

#include <string>
#include <string_view>

/// Starting kavendra at login. Nothing of it is stored by kavendra: the desktop's answer is the only record.
namespace kavendra {

enum class StartupRegistrationAction { registerApp, unregisterApp };

/// Returns what a person wants who asks for a change: to be rid of what is enabled, to have anything else.
StartupRegistrationAction requestedStartupAction(StartupRegistrationStatus status);

/// Returns the question that is asked before the action is carried out.
std::string_view confirmationMessage(StartupRegistrationAction action);

/// What came of a change.
struct StartupChange {
    StartupRegistrationStatus status;
    Result<std::string> message; ///< the status message, or the failure to be reported
};

/// Carries an action out and asks the desktop what holds now. The message follows that answer, whatever the
/// action was. Fails with LaunchError::startupRegistrationFailed.
StartupChange changeStartupRegistration(Desktop& desktop, StartupRegistrationAction action);

} // namespace kavendra
