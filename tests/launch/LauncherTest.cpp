#include "launch/Launcher.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

namespace {

class LauncherTest : public testing::Test {
protected:
    LauncherTest() {
        setenv("HOME", home.path().c_str(), 1);
        std::filesystem::create_directories(home.path("Browser.app"));
        std::filesystem::create_directories(home.path("folder"));
        home.write("notes.txt", "");
        chmod(home.write("tool", "#!/bin/sh\n").c_str(), 0755);
        desktop.applications = {home.path("Browser.app"), "firefox.desktop"};
    }

    /// Returns the kind, or the error's description behind "! ".
    std::string launch(const std::string& command, const std::string& params = {}) {
        const LaunchItem item{
            .id = {}, .title = "Title", .command = command, .params = params, .keywords = "", .source = ""};
        const Result<std::string_view> kind = launcher.launch(item);
        return kind ? std::string(*kind) : "! " + kind.error().description;
    }

    /// Returns what the desktop or the system was asked, and forgets it.
    std::string asked() {
        std::string text;
        for (auto* calls : {&desktop.calls, &processes.calls}) {
            for (const std::string& call : *calls)
                text += call + ";";
            calls->clear();
        }
        return text;
    }

    TemporaryDirectory home;
    RecordingDesktop desktop;
    RecordingProcesses processes{{"PATH=" + home.path()}};
    std::vector<std::string> log;
    Launcher launcher{desktop, processes, [this](std::string_view line) { log.emplace_back(line); }};
};

} // namespace

TEST_F(LauncherTest, takesTheFirstRoadThatHolds) {
    const std::string web = "https://example.org/";
    const std::string app = home.path("Browser.app");
    const std::string folder = home.path("folder");
    const std::string notes = home.path("notes.txt");
    const std::string tool = home.path("tool");
    struct Case {
        std::string command, params, kind, asked;
    };
    for (const Case& c : {
             Case{app, web, "specific browser", "openURLWithApplication " + web + " " + app + ";"},
             Case{" ~/Browser.app\n", "\tHTTPS://example.org/ ", "specific browser",
                  "openURLWithApplication " + web + " " + app + ";"},
             Case{"firefox.desktop", web, "specific browser",
                  "openURLWithApplication " + web + " firefox.desktop;"},
             Case{web, "", "url", "openURL " + web + ";"},
             Case{" HTTP://Example.org/a b ", "these are not used", "url",
                  "openURL http://example.org/a%20b;"},
             Case{web, web, "url", "openURL " + web + ";"},
             Case{app, "", "finder", "showDirectory " + app + ";"},
             Case{"~/folder", " \n\u3000", "finder", "showDirectory " + folder + ";"},
             Case{"~/notes.txt", "", "default app", "openFile " + notes + ";"},
             Case{tool, "", "default app", "openFile " + tool + ";"},
             Case{"tool", "", "command", "start " + tool + ";"},
             Case{" tool ", " a \"b c\" 'd e' ", "command + params", "start " + tool + "|a|b c|d e;"},
             Case{"~/tool", "~/notes.txt '  ' \" x \"", "command + params",
                  "start " + tool + "|" + notes + "||x;"},
             Case{"tool", web, "command + params", "start " + tool + "|" + web + ";"},
         }) {
        SCOPED_TRACE(c.command + " | " + c.params);
        EXPECT_EQ(launch(c.command, c.params), c.kind);
        EXPECT_EQ(asked(), c.asked);
    }
    EXPECT_TRUE(log.empty());
}

TEST_F(LauncherTest, startsNothingWhenTheProgramOrItsParamsAreWrong) {
    struct Case {
        std::string command, params, error;
    };
    for (const Case& c : {
             Case{"", "", "Command not found: "},
             Case{" \n", "x", "Command not found: "},
             Case{"no-such-tool", "", "Command not found: no-such-tool"},
             Case{"~/missing", "", "Command not found: " + home.path("missing")},
             Case{"~/notes.txt", "x", "Command not found: " + home.path("notes.txt")},
             Case{"~/folder", "x", "Command not found: " + home.path("folder")},
             Case{"~/folder", "https://example.org", "Command not found: " + home.path("folder")},
             Case{"file:///etc/hostname", "", "Command not found: file:///etc/hostname"},
             Case{"tool", "a \"b", "Params contains an unterminated quote"},
             Case{"no-such-tool", "\"", "Command not found: no-such-tool"},
         }) {
        SCOPED_TRACE(c.command + " | " + c.params);
        EXPECT_EQ(launch(c.command, c.params), "! " + c.error);
        EXPECT_EQ(asked(), "");
    }
}

TEST_F(LauncherTest, reportsWhatTheDesktopRefuses) {
    desktop.accepts = false;
    EXPECT_EQ(launch(" HTTP://Example.org/a b "), "! Invalid URL: HTTP://Example.org/a b");
    EXPECT_EQ(launch("~/notes.txt"), "! Command not found: " + home.path("notes.txt"));
    EXPECT_EQ(launch("~/folder"), "! Failed to open in Finder: " + home.path("folder"));
    EXPECT_TRUE(log.empty());

    const std::string app = home.path("Browser.app");
    EXPECT_EQ(launch(app, "https://example.org"), "specific browser");
    EXPECT_EQ(log, std::vector<std::string>{"Failed to open URL with application: " + app});

    const auto opened = launcher.openWebAddressWithApplication("https://example.org", "/missing.app");
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().description, "Application not found: /missing.app");
}

TEST_F(LauncherTest, passesTheSystemsErrorOnUnchanged) {
    processes.startResult = std::unexpected(Error{"/tool: Exec format error"});
    processes.runResult = std::unexpected(Error{"/tool: Exec format error"});
    EXPECT_EQ(launch("tool"), "! /tool: Exec format error");
    EXPECT_EQ(launcher.runProgramAndWait("/tool", {}).error().description, "/tool: Exec format error");
}

TEST_F(LauncherTest, reportsAFailedProgramInItsOwnWords) {
    struct Case {
        std::string standardError, description;
    };
    EXPECT_TRUE(launcher.runProgramAndWait("/bin/x", {"~/a b", ""}));
    EXPECT_EQ(asked(), "run /bin/x|~/a b|;");
    for (const Case& c : {Case{" \n", ""}, Case{"no such\nfile 日本\r\n", "no such\nfile 日本"},
                          Case{"\xFF\xFE", "/bin/x"}}) {
        processes.runResult = ProgramOutcome{.succeeded = false, .standardError = c.standardError};
        const Result<void> ran = launcher.runProgramAndWait("/bin/x", {});
        ASSERT_FALSE(ran);
        EXPECT_EQ(ran.error().description, "Script execution failed: " + c.description);
    }
}

} // namespace kavendra
