#include "config/LaunchAtLogin.h"

#include "tests/support/RecordingDesktop.h"

#include <gtest/gtest.h>

namespace kavendra {

namespace {

using enum StartupRegistrationStatus;
using enum StartupRegistrationAction;

} // namespace

TEST(LaunchAtLogin, onlyWhatIsEnabledIsRemoved) {
    EXPECT_EQ(requestedStartupAction(enabled), unregisterApp);
    for (const StartupRegistrationStatus status : {notRegistered, requiresApproval, notFound})
        EXPECT_EQ(requestedStartupAction(status), registerApp);
}

TEST(LaunchAtLogin, theOutcomeFollowsThePlatformsAnswerAndTheStatusAfterIt) {
    const Result<void> done;
    const Result<void> noSpace = std::unexpected(Error{"/a: No space left on device"});
    const std::string failed = "! Failed to update startup registration: ";
    struct Case {
        Result<void> answer;
        StartupRegistrationStatus after;
        std::string message;
    };
    for (const auto& [answer, after, message] : {
             Case{done, enabled, "Enabled launch at login"},
             Case{done, notRegistered, "Disabled launch at login"},
             Case{done, requiresApproval, "Launch at login requires approval in System Settings"},
             Case{done, static_cast<StartupRegistrationStatus>(7), "Updated launch at login"},
             Case{done, notFound, failed + "App service not found"},
             Case{noSpace, requiresApproval, failed + "/a: No space left on device"},
         })
        for (const StartupRegistrationAction action : {registerApp, unregisterApp}) {
            RecordingDesktop desktop;
            desktop.startupStatusAfterChange = after;
            desktop.startupResult = answer;
            const auto [status, told] = changeStartupRegistration(desktop, action);
            EXPECT_EQ(status, after);
            EXPECT_EQ(told ? *told : "! " + told.error().description, message);
            EXPECT_EQ(desktop.calls,
                      std::vector<std::string>{action == registerApp ? "enableLaunchAtLogin"
                                                                     : "disableLaunchAtLogin"});
        }
}

} // namespace kavendra
