#include "launch/Launcher.h"

#include "tests/launch/LaunchFixture.h"

namespace kavendra {

namespace {

class LauncherTest : public LaunchFixture {
protected:
    LauncherTest() {
        std::filesystem::create_directories(app);
        desktop.applications = {app, "firefox.desktop", entry};
    }

    /// Returns the kind in "Launched (<kind>): X" or, after "! ", the failure, and the calls made.
    std::string launch(const std::string& command, const std::string& params = {}) {
        LaunchItem item;
        item.title = "X";
        item.command = command;
        item.params = params;
        std::string outcome = text(launcher.launch(item));
        constexpr std::string_view before = "Launched (", after = "): X";
        if (outcome.starts_with(before))
            outcome.erase(0, before.size()).erase(outcome.find(after), after.size());
        return outcome;
    }

    std::string runAndWait(const std::vector<std::string>& arguments = {}) {
        return text(launcher.runProgram("/bin/x", arguments, "success"));
    }

    const std::string app = home.path("Browser.app"), entry = home.path("x.desktop");
};

} // namespace

TEST_F(LauncherTest, launchesByTheFirstRuleThatApplies) {
    const std::string web = "https://example.org/";
    const std::string inApp = "specific browser; openURLWithApplication " + web + " ";
    const std::string missing = "! Command not found: ";
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [command, params, outcome] : {
             Case{app, web, inApp + app},
             Case{" ~/Browser.app\n", "\tHTTPS://example.org/ ",
                  "specific browser; openURLWithApplication HTTPS://example.org/ " + app},
             Case{"firefox.desktop", web, inApp + "firefox.desktop"},
             Case{web, web, "url; openURL " + web},
             Case{" HTTP://Example.org/a b ", "not used", "url; openURL HTTP://Example.org/a%20b"},
             Case{"http:example.org", "", "url; openURL http:example.org"}, // the browser reports the error
             Case{"firefox.desktop", "", "default app; startApplication firefox.desktop"},
             Case{" ~/x.desktop ", "~/notes.txt 'ftp://a b'",
                  "default app; startApplication " + entry + "|" + notes + "|ftp://a b"},
             Case{entry, "refused", missing + entry},
             Case{entry, "\"", missing + entry},
             Case{app, "", "finder; showDirectory " + app},
             Case{"~/folder", " \n\u3000", "finder; showDirectory " + folder},
             Case{"~/notes.txt", "", "default app; openFile " + notes},
             Case{tool, "", "default app; openFile " + tool},
             Case{"tool", "", "command; start " + tool},
             Case{" tool ", " a \"b c\" 'd e' ", "command + params; start " + tool + "|a|b c|d e"},
             Case{"~/tool", "~/notes.txt '  ' \" x \"",
                  "command + params; start " + tool + "|" + notes + "||x"},
             Case{"tool", web, "command + params; start " + tool + "|" + web},
             Case{"", "", missing},
             Case{" \n", "x", missing},
             Case{"no-such-tool", "", missing + "no-such-tool"},
             Case{"www.example.org/", "", missing + "www.example.org/"},
             Case{"~/missing", "", missing + home.path("missing")},
             Case{"~/notes.txt", "x", missing + notes},
             Case{"~/folder", "x", missing + folder},
             Case{"~/folder", "https://example.org", missing + folder},
             Case{"tool", "a \"b", "! Params contains an unterminated quote"},
             Case{"no-such-tool", "\"", missing + "no-such-tool"},
         }) {
        EXPECT_EQ(launch(command, params), outcome) << command << " | " << params;
    }
    EXPECT_TRUE(log.empty());
}

TEST_F(LauncherTest, reportsFailuresOfTheDesktop) {
    desktop.accepts = false;
    EXPECT_EQ(launch(" HTTP://Example.org/a b "),
              "! Invalid URL: HTTP://Example.org/a b; openURL HTTP://Example.org/a%20b");
    EXPECT_EQ(launch("~/notes.txt"), "! Command not found: " + notes + "; openFile " + notes);
    EXPECT_EQ(launch(entry), "! Command not found: " + entry + "; startApplication " + entry);
    EXPECT_EQ(launch("~/folder"), "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(launch(app, "https://example.org"),
              "specific browser; openURLWithApplication https://example.org " + app);
    EXPECT_EQ(log, std::vector<std::string>{"Failed to open URL with application: " + app});
    const auto opened = launcher.openWebAddressWithApplication("https://example.org", "/missing.app");
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().description, "Application not found: /missing.app");
}

TEST_F(LauncherTest, letsAProgramBringItsWindowToTheFront) {
    desktop.activation = {"TOKEN=1"};
    EXPECT_EQ(launch("tool", "a"), "command + params; start TOKEN=1 " + tool + "|a");
    EXPECT_EQ(runAndWait(), "success; run TOKEN=1 /bin/x");
}

TEST_F(LauncherTest, reportsTheStandardErrorOfAFailedProgram) {
    EXPECT_EQ(runAndWait({"~/a b", ""}), "success; run /bin/x|~/a b|");
    using Case = std::pair<std::string, std::string>;
    for (const auto& [standardError, description] :
         {Case{" \n", ""}, Case{"no such\nfile 日本\r\n", "no such\nfile 日本"},
          Case{"\xFF\xFE", "/bin/x"}}) {
        processes.runResult = ProgramOutcome{.succeeded = false, .standardError = standardError};
        EXPECT_EQ(runAndWait(), "! Script execution failed: " + description + "; run /bin/x");
    }
    processes.startResult = std::unexpected(Error{"/tool: Exec format error"});
    processes.runResult = std::unexpected(Error{"/tool: Exec format error"});
    EXPECT_EQ(launch("tool"), "! /tool: Exec format error; start " + tool)
        << "the system's reason, unchanged";
    EXPECT_EQ(runAndWait(), "! /tool: Exec format error; run /bin/x");
}

} // namespace kavendra
