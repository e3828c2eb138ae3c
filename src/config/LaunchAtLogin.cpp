#include "config/LaunchAtLogin.h"

#include "data/LaunchError.h"

namespace kavendra {

namespace {

std::unexpected<Error> failure(const std::string& reason) {
    return std::unexpected<Error>(LaunchError{LaunchError::startupRegistrationFailed, reason});
}

Result<std::string> messageFor(StartupRegistrationStatus status) {
    switch (status) {
    case StartupRegistrationStatus::enabled:
        return "Enabled launch at login";
    case StartupRegistrationStatus::notRegistered:
        return "Disabled launch at login";
    case StartupRegistrationStatus::requiresApproval:
        return "Launch at login requires approval in System Settings";
    case StartupRegistrationStatus::notFound:
        return failure("App service not found");
    }
    return "Updated launch at login"; // of a status that a later desktop may add
}

} // namespace

StartupRegistrationAction requestedStartupAction(StartupRegistrationStatus status) {
    return status == StartupRegistrationStatus::enabled ? StartupRegistrationAction::unregisterApp
                                                        : StartupRegistrationAction::registerApp;
}

std::string_view confirmationMessage(StartupRegistrationAction action) {
    return action == StartupRegistrationAction::registerApp ? "Register kavendra to startup?"
                                                            : "Remove kavendra from startup?";
}

StartupChange changeStartupRegistration(Desktop& desktop, StartupRegistrationAction action) {
    const Result<void> changed = action == StartupRegistrationAction::registerApp
                                     ? desktop.registerLoginItem()
                                     : desktop.unregisterLoginItem();
    const StartupRegistrationStatus status = desktop.loginItemStatus();
    if (!changed)
        return {status, failure(changed.error().description)};
    return {status, messageFor(status)};
}

} // namespace kavendra
