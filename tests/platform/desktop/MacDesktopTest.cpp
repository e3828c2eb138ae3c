#include "platform/desktop/MacDesktop.h"

#include "platform/desktop/LaunchAgent.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(MacDesktop, runsTheCommandLinesOfTheOpenTool) {
    const TemporaryDirectory directory;
    std::filesystem::create_directories(directory.path("Safari.APP"));
    std::filesystem::create_directories(directory.path("folder"));
    RecordingProcesses processes;
    MacDesktop desktop(processes);

    EXPECT_TRUE(desktop.openURL("https://example.org/"));
    EXPECT_TRUE(desktop.openFile("/a/b c.txt"));
    EXPECT_TRUE(desktop.openFile("-a"));
    EXPECT_TRUE(desktop.openURLWithApplication("https://example.org/", directory.path("Safari.APP")));
    EXPECT_TRUE(desktop.showDirectory(directory.path("folder")));
    EXPECT_TRUE(desktop.showDirectory(directory.path("Safari.APP")));
    EXPECT_FALSE(desktop.showDirectory(directory.path("missing")));
    EXPECT_TRUE(desktop.openTerminal("/a/b c"));
    EXPECT_EQ(processes.calls,
              (std::vector<std::string>{
                  "run /usr/bin/open|https://example.org/",
                  "run /usr/bin/open|/a/b c.txt",
                  "run /usr/bin/open|./-a",
                  "run /usr/bin/open|-a|" + directory.path("Safari.APP") + "|https://example.org/",
                  "run /usr/bin/open|" + directory.path("folder"),
                  "run /usr/bin/open|-R|" + directory.path("Safari.APP"),
                  "run /usr/bin/open|-a|Terminal|/a/b c",
              }));
}

TEST(MacDesktop, registersALaunchAgent) {
    const TemporaryDirectory home;
    setenv("HOME", home.path().c_str(), 1);
    RecordingProcesses processes;
    MacDesktop desktop(processes);
    EXPECT_EQ(desktop.launchAtLoginStatus(), StartupRegistrationStatus::notRegistered);
    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_TRUE(desktop.enableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), StartupRegistrationStatus::enabled);
    EXPECT_NE(home.read("Library/LaunchAgents/kavendra.plist").find("<string>/"), std::string::npos);
    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), StartupRegistrationStatus::notRegistered);
    EXPECT_NE(launchAgent("/R&D <1>/k").find("<string>/R&amp;D &lt;1&gt;/k</string>"), std::string::npos);
    EXPECT_EQ(launchAgentStatus(launchAgentPath(), home.path("missing")),
              StartupRegistrationStatus::notFound);
}

TEST(MacDesktop, passesOnThatTheToolFailedOrIsMissing) {
    const TemporaryDirectory directory;
    for (const Result<ProgramOutcome>& result : {Result<ProgramOutcome>(ProgramOutcome{}),
                                                 Result<ProgramOutcome>(std::unexpected(Error{"missing"}))}) {
        RecordingProcesses processes;
        processes.runResult = result;
        MacDesktop desktop(processes);
        EXPECT_FALSE(desktop.openURL("https://example.org/"));
        EXPECT_FALSE(desktop.openFile("/a"));
        EXPECT_FALSE(desktop.showDirectory(directory.path()));
        EXPECT_FALSE(desktop.openURLWithApplication("https://example.org/", "/A.app"));
    }
}

TEST(MacDesktop, givesTheToolsWordsAboutATerminal) {
    RecordingProcesses processes;
    MacDesktop desktop(processes);
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "no Terminal"};
    EXPECT_EQ(desktop.openTerminal("/a")->standardError, "no Terminal");
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "\xFF"};
    EXPECT_EQ(desktop.openTerminal("/a")->standardError, "/usr/bin/open");
    processes.runResult = std::unexpected(Error{"missing"});
    EXPECT_FALSE(desktop.openTerminal("/a"));
}

} // namespace kavendra
