#include "platform/desktop/MacDesktop.h"

#include "platform/desktop/LaunchAgent.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(MacDesktop, runsOpen) {
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

TEST(MacDesktop, launchAtLoginWritesALaunchAgent) {
    const TemporaryDirectory home;
    setenv("HOME", home.path().c_str(), 1);
    RecordingProcesses processes;
    MacDesktop desktop(processes);
    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_TRUE(desktop.enableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), StartupRegistrationStatus::enabled);
    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), StartupRegistrationStatus::notRegistered);
    EXPECT_NE(launchAgent("/R&D <1>/k").find("<string>/R&amp;D &lt;1&gt;/k</string>"), std::string::npos);
    EXPECT_EQ(launchAgentStatus(launchAgentPath(), home.path("missing")),
              StartupRegistrationStatus::notFound);
}

TEST(MacDesktop, reportsThatTheToolFailedOrIsMissing) {
    const TemporaryDirectory directory;
    RecordingProcesses processes;
    MacDesktop desktop(processes);
    const auto reasonOf = [](const auto& result) {
        return result ? "no failure" : result.error().description;
    };
    for (const Result<ProgramOutcome>& result :
         {Result<ProgramOutcome>(ProgramOutcome{.succeeded = false, .standardError = "reason"}),
          Result<ProgramOutcome>(std::unexpected(Error{"reason"}))}) {
        processes.runResult = result;
        EXPECT_EQ(reasonOf(desktop.openURL("https://example.org/")), "reason");
        EXPECT_EQ(reasonOf(desktop.openFile("/a")), "reason");
        EXPECT_EQ(reasonOf(desktop.showDirectory(directory.path())), "reason");
        EXPECT_EQ(reasonOf(desktop.openURLWithApplication("https://example.org/", "/A.app")), "reason");
        const auto terminal = desktop.openTerminal("/a");
        EXPECT_EQ(terminal ? terminal->standardError : terminal.error().description, "reason");
    }
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "\xFF"};
    EXPECT_EQ(desktop.openTerminal("/a")->standardError, "/usr/bin/open") << "standard error is not UTF-8";
}

} // namespace kavendra
