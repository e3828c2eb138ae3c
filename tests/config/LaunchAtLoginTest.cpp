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
    EXPECT_EQ(confirmationMessage(registerApp), "Register kavendra to startup?");
    EXPECT_EQ(confirmationMessage(unregisterApp), "Remove kavendra from startup?");
}

TEST(LaunchAtLogin, theMessageFollowsTheStatusAfterTheChange) {
    struct Case {
        StartupRegistrationStatus after;
        const char* message;
    };
    for (const StartupRegistrationAction action : {registerApp, unregisterApp})
        for (const auto& [after, message] : {
                 Case{enabled, "Enabled launch at login"},
                 Case{notRegistered, "Disabled launch at login"},
                 Case{requiresApproval, "Launch at login requires approval in System Settings"},
                 Case{static_cast<StartupRegistrationStatus>(7), "Updated launch at login"},
             }) {
            RecordingDesktop desktop;
            desktop.startupStatusAfterChange = after;
            const StartupChange change = changeStartupRegistration(desktop, action);
            EXPECT_EQ(change.status, after);
            EXPECT_EQ(change.message.value_or("failure"), message);
            EXPECT_EQ(desktop.calls, std::vector<std::string>{action == registerApp ? "registerLoginItem"
                                                                                    : "unregisterLoginItem"});
        }
}

TEST(LaunchAtLogin, failsInThePlatformsWordsAndWithTheStatusOfNow) {
    RecordingDesktop desktop;
    desktop.startupStatusAfterChange = notFound;
    StartupChange change = changeStartupRegistration(desktop, registerApp);
    EXPECT_EQ(change.message.error().description,
              "Failed to update startup registration: App service not found");
    EXPECT_EQ(change.status, notFound);

    desktop.startupStatusAfterChange = requiresApproval;
    desktop.startupResult = std::unexpected(Error{"/a: No space left on device"});
    change = changeStartupRegistration(desktop, registerApp);
    EXPECT_EQ(change.message.error().description,
              "Failed to update startup registration: /a: No space left on device");
    EXPECT_EQ(change.status, requiresApproval);
}

} // namespace kavendra
