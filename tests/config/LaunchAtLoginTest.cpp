#include "config/LaunchAtLogin.h"

#include "tests/support/RecordingDesktop.h"

#include <gtest/gtest.h>

namespace kavendra {

using enum StartupRegistrationStatus;
using enum StartupRegistrationAction;

TEST(LaunchAtLogin, removalIsOfferedOnlyWhenEnabled) {
    EXPECT_EQ(requestedStartupAction(enabled), unregisterApp);
    for (const StartupRegistrationStatus status : {notRegistered, requiresApproval, notFound})
        EXPECT_EQ(requestedStartupAction(status), registerApp);
}

TEST(LaunchAtLogin, messageFollowsTheResultAndTheNewStatus) {
    const Result<void> noSpace = std::unexpected(Error{"/a: No space left on device"});
    const std::string failed = "! Failed to update startup registration: ";
    using Case = std::tuple<Result<void>, StartupRegistrationStatus, std::string>;
    for (const auto& [result, status, message] : {
             Case{{}, enabled, "Enabled launch at login"},
             Case{{}, notRegistered, "Disabled launch at login"},
             Case{{}, requiresApproval, "Launch at login requires approval in System Settings"},
             Case{{}, static_cast<StartupRegistrationStatus>(7), "Updated launch at login"},
             Case{{}, notFound, failed + "App service not found"},
             Case{noSpace, requiresApproval, failed + "/a: No space left on device"},
         })
        for (const StartupRegistrationAction action : {registerApp, unregisterApp}) {
            RecordingDesktop desktop;
            desktop.startupStatusAfterChange = status;
            desktop.startupResult = result;
            const StartupChange change = changeStartupRegistration(desktop, action);
            EXPECT_EQ(change.status, status);
            EXPECT_EQ(change.message ? *change.message : "! " + change.message.error().description, message);
            EXPECT_EQ(desktop.calls,
                      std::vector<std::string>{action == registerApp ? "enableLaunchAtLogin"
                                                                     : "disableLaunchAtLogin"});
        }
}

} // namespace kavendra
