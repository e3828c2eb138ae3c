#include "launch/Launcher.h"

#include "tests/launch/LaunchFixture.h"

namespace kavendra {

namespace {

class LauncherTest : public LaunchFixture {
protected:
    LauncherTest() {
        std::filesystem::create_directories(app);
        desktop.applications = {app, "firefox.desktop"};
    }

    std::string launch(const std::string& command, const std::string& params = {}) {
        LaunchItem item;
        item.title = "X";
        item.command = command;
        item.params = params;
        return text(launcher.launch(item));
    }

    std::string runAndWait(const std::vector<std::string>& arguments = {}) {
        return text(outcomeOf(launcher.runProgramAndWait("/bin/x", arguments), "success"));
    }

    const std::string app = home.path("Browser.app");
};

} // namespace

TEST_F(LauncherTest, launchesByTheFirstRuleThatApplies) {
    const std::string web = "https://example.org/";
    const std::string inApp = "Launched (specific browser): X; openURLWithApplication " + web + " ";
    const std::string missing = "! Command not found: ";
    struct Case {
        std::string command, params, outcome;
    };
    for (const Case& c : {
             Case{app, web, inApp + app},
             Case{" ~/Browser.app\n", "\tHTTPS://example.org/ ",
                  "Launched (specific browser): X; openURLWithApplication HTTPS://example.org/ " + app},
             Case{"firefox.desktop", web, inApp + "firefox.desktop"},
             Case{web, web, "Launched (url): X; openURL " + web},
             Case{" HTTP://Example.org/a b ", "not used",
                  "Launched (url): X; openURL HTTP://Example.org/a%20b"},
             Case{"http:example.org", "",
                  "Launched (url): X; openURL http:example.org"}, // the browser reports the error
             Case{app, "", "Launched (finder): X; showDirectory " + app},
             Case{"~/folder", " \n\u3000", "Launched (finder): X; showDirectory " + folder},
             Case{"~/notes.txt", "", "Launched (default app): X; openFile " + notes},
             Case{tool, "", "Launched (default app): X; openFile " + tool},
             Case{"tool", "", "Launched (command): X; start " + tool},
             Case{" tool ", " a \"b c\" 'd e' ",
                  "Launched (command + params): X; start " + tool + "|a|b c|d e"},
             Case{"~/tool", "~/notes.txt '  ' \" x \"",
                  "Launched (command + params): X; start " + tool + "|" + notes + "||x"},
             Case{"tool", web, "Launched (command + params): X; start " + tool + "|" + web},
             Case{"", "", missing},
             Case{" \n", "x", missing},
             Case{"no-such-tool", "", missing + "no-such-tool"},
             Case{"~/missing", "", missing + home.path("missing")},
             Case{"~/notes.txt", "x", missing + notes},
             Case{"~/folder", "x", missing + folder},
             Case{"~/folder", "https://example.org", missing + folder},
             Case{"tool", "a \"b", "! Params contains an unterminated quote"},
             Case{"no-such-tool", "\"", missing + "no-such-tool"},
         }) {
        SCOPED_TRACE(c.command + " | " + c.params);
        EXPECT_EQ(launch(c.command, c.params), c.outcome);
    }
    for (const std::string noWebAddress :
         {"example.org", "www.example.org/", "file:///etc/hostname", "http//a", "mailto:a@b.c",
          "ftp://example.org", "httpx://a", "http://a b/", "see https://example.org"})
        EXPECT_EQ(launch(noWebAddress), missing + noWebAddress);
    EXPECT_TRUE(log.empty());
}

TEST_F(LauncherTest, reportsFailuresOfTheDesktop) {
    desktop.accepts = false;
    EXPECT_EQ(launch(" HTTP://Example.org/a b "),
              "! Invalid URL: HTTP://Example.org/a b; openURL HTTP://Example.org/a%20b");
    EXPECT_EQ(launch("~/notes.txt"), "! Command not found: " + notes + "; openFile " + notes);
    EXPECT_EQ(launch("~/folder"), "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(launch(app, "https://example.org"),
              "Launched (specific browser): X; openURLWithApplication https://example.org " + app);
    EXPECT_EQ(log, std::vector<std::string>{"Failed to open URL with application: " + app});
    const auto opened = launcher.openWebAddressWithApplication("https://example.org", "/missing.app");
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().description, "Application not found: /missing.app");
}

TEST_F(LauncherTest, reportsTheStandardErrorOfAFailedProgram) {
    EXPECT_EQ(runAndWait({"~/a b", ""}), "success; run /bin/x|~/a b|");
    struct Case {
        std::string standardError, description;
    };
    for (const Case& c : {Case{" \n", ""}, Case{"no such\nfile 日本\r\n", "no such\nfile 日本"},
                          Case{"\xFF\xFE", "/bin/x"}}) {
        processes.runResult = ProgramOutcome{.succeeded = false, .standardError = c.standardError};
        EXPECT_EQ(runAndWait(), "! Script execution failed: " + c.description + "; run /bin/x");
    }
    processes.startResult = std::unexpected(Error{"/tool: Exec format error"});
    processes.runResult = std::unexpected(Error{"/tool: Exec format error"});
    EXPECT_EQ(launch("tool"), "! /tool: Exec format error; start " + tool)
        << "the system's reason, unchanged";
    EXPECT_EQ(runAndWait(), "! /tool: Exec format error; run /bin/x");
}

} // namespace kavendra
