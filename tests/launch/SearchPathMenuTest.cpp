#include "launch/SearchPathMenu.h"

#include "tests/launch/ActionsFixture.h"

namespace kavendra {

namespace {

using enum SearchPathActionTargetType;

class SearchPathMenuTest : public ActionsFixture {
protected:
    Menu menu(const std::string& searchText) {
        return searchPathMenu(searchText, configured, {searchPathActions, excel, report()});
    }

    /// Returns what choosing the entry of a text's menu reports and asks.
    std::string chosen(const std::string& searchText, const std::string& title) {
        choose(menu(searchText), title);
        return takeReport();
    }

    std::vector<SearchPathAction> configured{
        {.appName = "Tool 100%", .binaryPath = " ~/tool", .targetType = directory},
        {.appName = "Tool", .binaryPath = "tool", .targetType = file},
        {.appName = "Gone", .binaryPath = "no-such-tool", .targetType = file},
        {.appName = "Gone", .binaryPath = "~/notes.txt", .targetType = directory},
    };
};

} // namespace

TEST_F(SearchPathMenuTest, enablesWhatTheTextIsGoodFor) {
    const std::string nothing =
        "Open [(Open File with Associated App), (Open File with Tool), (Open File with Gone), -, "
        "(Open Directory with Finder), (Open Directory with Terminal), (Open Directory with Tool 100%), "
        "(Open Directory with Gone)], "
        "Open Excel [(Read-Only), (New Session), (New Session + Read-Only)], "
        "Copy to Clipboard [(Copy Directory), (Copy Filename)]";
    const std::string ofDirectory =
        "Open [(Open File with Associated App), (Open File with Tool), (Open File with Gone), -, "
        "Open Directory with Finder, Open Directory with Terminal, Open Directory with Tool 100%, "
        "(Open Directory with Gone)], "
        "Open Excel [(Read-Only), (New Session), (New Session + Read-Only)], "
        "Copy to Clipboard [Copy Directory, Copy Filename]";
    const std::string ofFile =
        "Open [Open File with Associated App, Open File with Tool, (Open File with Gone), -, "
        "Open Directory with Finder, Open Directory with Terminal, Open Directory with Tool 100%, "
        "(Open Directory with Gone)], "
        "Open Excel [(Read-Only), (New Session), (New Session + Read-Only)], "
        "Copy to Clipboard [Copy Directory, Copy Filename]";
    EXPECT_EQ(menuText(menu("")), nothing);
    EXPECT_EQ(menuText(menu("~/missing")), nothing);
    EXPECT_EQ(menuText(menu("'~/folder'")), ofDirectory);
    EXPECT_EQ(menuText(menu("\"~/notes.txt\"")), ofFile);
    EXPECT_EQ(menuText(menu("~/Book.XLSX")), ofFile) << "there is no Excel";
    installExcel();
    EXPECT_EQ(menuText(menu("~/folder.xlsx")), ofDirectory) << "a directory is no workbook";
    EXPECT_EQ(menuText(menu("~/Book.XLSX")[1].submenu), "Read-Only, New Session, New Session + Read-Only");
    configured.clear();
    EXPECT_EQ(menuText(menu("~/folder")[0].submenu),
              "(Open File with Associated App), -, Open Directory with Finder, Open Directory with Terminal");
}

TEST_F(SearchPathMenuTest, actsOnTheFileOrItsDirectory) {
    const std::string notes = home.path("notes.txt");
    const std::string folder = home.path("folder");
    struct Case {
        std::string text, title, reported;
    };
    for (const Case& c : {
             Case{"~/notes.txt", "Open File with Associated App", "Opened path; openFile " + notes},
             Case{"~/notes.txt", "Open File with Tool",
                  "Opened file with Tool; run " + home.path("tool") + "|" + notes},
             Case{"~/notes.txt", "Open Directory with Finder",
                  "Opened directory in Finder; showDirectory " + home.path()},
             Case{"~/folder", "Open Directory with Terminal",
                  "Opened directory in Terminal; openTerminal " + folder},
             Case{"~/folder/", "Open Directory with Tool 100%",
                  "Opened directory with Tool 100%; run " + home.path("tool") + "|" + folder},
             Case{"~/notes.txt", "Copy Directory", "Copied directory; copyText " + home.path()},
             Case{"~/folder/", "Copy Directory", "Copied directory; copyText " + folder},
             Case{"~/notes.txt", "Copy Filename", "Copied filename; copyText notes.txt"},
             Case{"~/folder/", "Copy Filename", "Copied filename; copyText folder"},
         }) {
        SCOPED_TRACE(c.title);
        EXPECT_EQ(chosen(c.text, c.title), c.reported);
    }
}

TEST_F(SearchPathMenuTest, looksForItsTargetAgainWhenChosen) {
    installExcel();
    const Menu before = menu("~/Book.XLSX");
    std::filesystem::remove(home.path("Book.XLSX"));
    std::filesystem::remove(home.path("tool"));
    struct Case {
        std::string title, reported;
    };
    for (const Case& c : {
             Case{"Open File with Associated App", "No path to open"},
             Case{"Open File with Tool", "No file to open"},
             Case{"Open Directory with Finder", "No directory to open"},
             Case{"Open Directory with Terminal", "No directory to open"},
             Case{"Open Directory with Tool 100%", "No directory to open"},
             Case{"Read-Only", "No Excel file to open"},
             Case{"Copy Directory", "No directory to copy"},
             Case{"Copy Filename", "No filename to copy"},
         }) {
        SCOPED_TRACE(c.title);
        choose(before, c.title);
        EXPECT_EQ(takeReport(), c.reported);
    }
    EXPECT_EQ(chosen("~/notes.txt", "Open File with Tool"), "Tool command not found");
    EXPECT_EQ(chosen("~/folder", "Open File with Tool"), "No file to open");
}

TEST_F(SearchPathMenuTest, reportsWhatIsRefused) {
    desktop.accepts = false;
    desktop.terminalResult = std::unexpected(Error{home.path("folder") + ": Permission denied"});
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = " no display\n"};
    EXPECT_EQ(chosen("~/notes.txt", "Open File with Associated App"),
              "Failed to open path; openFile " + home.path("notes.txt"));
    EXPECT_EQ(chosen("~/folder", "Open Directory with Finder"),
              "! Failed to open in Finder: " + home.path("folder") + "; showDirectory " +
                  home.path("folder"));
    EXPECT_EQ(chosen("~/folder", "Open Directory with Terminal"),
              "! " + home.path("folder") + ": Permission denied; openTerminal " + home.path("folder"));
    desktop.terminalResult = processes.runResult;
    EXPECT_EQ(chosen("/", "Open Directory with Terminal"),
              "! Script execution failed: no display; openTerminal /");
    EXPECT_EQ(chosen("~/notes.txt", "Open File with Tool"), "! Script execution failed: no display; run " +
                                                                home.path("tool") + "|" +
                                                                home.path("notes.txt"));
    processes.runResult = std::unexpected(Error{"tool: Exec format error"});
    EXPECT_EQ(chosen("~/notes.txt", "Open File with Tool"),
              "! tool: Exec format error; run " + home.path("tool") + "|" + home.path("notes.txt"));
}

TEST_F(SearchPathMenuTest, aProgramThatFailsWithAMegabyteOfWordsNeitherHangsNorLosesThem) {
    home.write("tool", "#!/bin/sh\nyes \"$1\" | head -c 1000000 >&2\nexit 3\n");
    Processes real{{"PATH=" + home.path() + ":/usr/bin:/bin"}};
    Launcher realLauncher{desktop, real, [](std::string_view) {}};
    SearchPathActions actions{desktop, real, realLauncher};
    const ActionOutcome outcome = actions.run(configured[1], "~/notes.txt");
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(
        outcome.error().description.starts_with("Script execution failed: " + home.path("notes.txt") + "\n"));
    EXPECT_GT(outcome.error().description.size(), 999000U);
}

} // namespace kavendra
