#include "config/LaunchAtLogin.h"

#include "base/TranslatableText.h"
#include "config/ConfigErrors.h"

namespace kavendra {

namespace {

Result<std::string> messageFor(StartupRegistrationStatus status) {
    switch (status) {
    case StartupRegistrationStatus::enabled:
        return "Enabled launch at login";
    case StartupRegistrationStatus::notRegistered:
        return "Disabled launch at login";
    case StartupRegistrationStatus::requiresApproval:
        return "Launch at login requires approval in System Settings";
    case StartupRegistrationStatus::notFound:
        return LaunchError::startupRegistrationFailed("App service not found");
    }
    return "Updated launch at login"; // a status unknown to this version
}

} // namespace

StartupRegistrationAction requestedStartupAction(StartupRegistrationStatus status) {
    return status == StartupRegistrationStatus::enabled ? StartupRegistrationAction::unregisterApp
                                                        : StartupRegistrationAction::registerApp;
}

std::string_view confirmationMessage(StartupRegistrationAction action) {
    return action == StartupRegistrationAction::registerApp ? KAVENDRA_TEXT("Register kavendra to startup?")
                                                            : KAVENDRA_TEXT("Remove kavendra from startup?");
}

StartupChange changeStartupRegistration(Desktop& desktop, StartupRegistrationAction action) {
    const Result<void> changed = action == StartupRegistrationAction::registerApp
                                     ? desktop.enableLaunchAtLogin()
                                     : desktop.disableLaunchAtLogin();
    const StartupRegistrationStatus status = desktop.launchAtLoginStatus();
    if (!changed)
        return {status, LaunchError::startupRegistrationFailed(changed.error().description)};
    return {status, messageFor(status)};
}

} // namespace kavendra
