#include "config/LaunchAtLogin.h"

#include "tests/support/RecordingDesktop.h"

#include <gtest/gtest.h>

namespace kavendra {

using enum StartupRegistrationStatus;
using enum StartupRegistrationAction;

TEST(LaunchAtLogin, messageAndNextActionFollowTheResultAndTheNewStatus) {
    const Result<void> noSpace = std::unexpected(Error{"/a: No space left on device"});
    const std::string failed = "! Failed to update startup registration: ";
    using Case = std::tuple<Result<void>, StartupRegistrationStatus, std::string, StartupRegistrationAction>;
    for (const auto& [result, status, message, next] : {
             Case{{}, enabled, "Enabled launch at login", unregisterApp},
             Case{{}, notRegistered, "Disabled launch at login", registerApp},
             Case{{}, requiresApproval, "Launch at login requires approval in System Settings", registerApp},
             Case{{}, static_cast<StartupRegistrationStatus>(7), "Updated launch at login", registerApp},
             Case{{}, notFound, failed + "App service not found", registerApp},
             Case{noSpace, requiresApproval, failed + "/a: No space left on device", registerApp},
         })
        for (const StartupRegistrationAction action : {registerApp, unregisterApp}) {
            RecordingDesktop desktop;
            desktop.startupStatusAfterChange = status;
            desktop.startupResult = result;
            const StartupChange change = changeStartupRegistration(desktop, action);
            EXPECT_EQ(change.status, status);
            EXPECT_EQ(requestedStartupAction(status), next);
            EXPECT_EQ(change.message ? *change.message : "! " + change.message.error().description, message);
            EXPECT_EQ(desktop.calls,
                      std::vector<std::string>{action == registerApp ? "enableLaunchAtLogin"
                                                                     : "disableLaunchAtLogin"});
        }
}

} // namespace kavendra
