#include "app/TypedPathMenu.h"

#include "tests/launch/LaunchFixture.h"

namespace kavendra {

namespace {

using enum SearchPathActionTargetType;

class TypedPathMenuTest : public LaunchFixture {
protected:
    Menu menu(const std::string& searchText) {
        return typedPathMenu(searchText, configured, {searchPathActions, excel, report()});
    }

    std::vector<SearchPathAction> configured{
        {.appName = "Tool 100%", .binaryPath = " ~/tool", .targetType = directory},
        {.appName = "Tool", .binaryPath = "tool", .targetType = file},
        {.appName = "Gone", .binaryPath = "no-such-tool", .targetType = file},
        {.appName = "Gone", .binaryPath = "~/notes.txt", .targetType = directory},
    };
};

} // namespace

TEST_F(TypedPathMenuTest, enablesWhatTheTextIsGoodFor) {
    const std::string noFile =
        "Open [(Open File with Associated App), (Open File with Tool), (Open File with Gone), -, ";
    const std::string someFile =
        "Open [Open File with Associated App, Open File with Tool, (Open File with Gone), -, ";
    const std::string someDirectory =
        "Open Directory with Finder, Open Directory with Terminal, Open Directory with Tool 100%, "
        "(Open Directory with Gone)], "
        "Open Excel [(Read-Only), (New Session), (New Session + Read-Only)], "
        "Copy to Clipboard [Copy Directory, Copy Filename]";
    const std::string nothing =
        noFile +
        "(Open Directory with Finder), (Open Directory with Terminal), (Open Directory with Tool 100%), "
        "(Open Directory with Gone)], "
        "Open Excel [(Read-Only), (New Session), (New Session + Read-Only)], "
        "Copy to Clipboard [(Copy Directory), (Copy Filename)]";
    EXPECT_EQ(menuText(menu("")), nothing);
    EXPECT_EQ(menuText(menu("~/missing")), nothing);
    EXPECT_EQ(menuText(menu("'~/folder'")), noFile + someDirectory);
    EXPECT_EQ(menuText(menu("\"~/notes.txt\"")), someFile + someDirectory);
    EXPECT_EQ(menuText(menu("~/Book.XLSX")), someFile + someDirectory) << "there is no Excel";
    installExcel();
    EXPECT_EQ(menuText(menu("~/folder.xlsx")), noFile + someDirectory) << "a directory is no workbook";
    EXPECT_EQ(menuText(menu("~/Book.XLSX")[1].submenu), "Read-Only, New Session, New Session + Read-Only");
    configured.clear();
    EXPECT_EQ(menuText(menu("~/folder")[0].submenu),
              "(Open File with Associated App), -, Open Directory with Finder, Open Directory with Terminal");
}

TEST_F(TypedPathMenuTest, actsOnTheFileOrItsDirectory) {
    struct Case {
        std::string text, title, outcome;
    };
    const std::string withTool = "Tool; run " + tool + "|";
    for (const Case& c : {
             Case{"~/notes.txt", "Open File with Associated App", "Opened path; openFile " + notes},
             Case{"~/notes.txt", "Open File with Tool", "Opened file with " + withTool + notes},
             Case{"~/notes.txt", "Open Directory with Finder",
                  "Opened directory in Finder; showDirectory " + home.path()},
             Case{"~/folder", "Open Directory with Terminal",
                  "Opened directory in Terminal; openTerminal " + folder},
             Case{"~/folder/", "Open Directory with Tool 100%",
                  "Opened directory with Tool 100%; run " + tool + "|" + folder},
             Case{"~/notes.txt", "Copy Directory", "Copied directory; copyText " + home.path()},
             Case{"~/folder/", "Copy Directory", "Copied directory; copyText " + folder},
             Case{"~/notes.txt", "Copy Filename", "Copied filename; copyText notes.txt"},
             Case{"~/folder/", "Copy Filename", "Copied filename; copyText folder"},
             Case{"~/folder", "Open File with Tool", "No file to open"},
         }) {
        SCOPED_TRACE(c.title);
        EXPECT_EQ(chosen(menu(c.text), c.title), c.outcome);
    }
}

TEST_F(TypedPathMenuTest, looksForItsTargetAgainWhenChosen) {
    installExcel();
    const Menu before = menu("~/Book.XLSX");
    std::filesystem::remove(home.path("Book.XLSX"));
    std::filesystem::remove(tool);
    struct Case {
        const char *title, *outcome;
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
        EXPECT_EQ(chosen(before, c.title), c.outcome);
    }
    EXPECT_EQ(chosen(menu("~/notes.txt"), "Open File with Tool"), "Tool command not found");
}

TEST_F(TypedPathMenuTest, reportsWhatIsRefused) {
    desktop.accepts = false;
    desktop.terminalResult = std::unexpected(Error{folder + ": Permission denied"});
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = " no display\n"};
    EXPECT_EQ(chosen(menu("~/notes.txt"), "Open File with Associated App"),
              "Failed to open path; openFile " + notes);
    EXPECT_EQ(chosen(menu("~/folder"), "Open Directory with Finder"),
              "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
    EXPECT_EQ(chosen(menu("~/folder"), "Open Directory with Terminal"),
              "! " + folder + ": Permission denied; openTerminal " + folder);
    desktop.terminalResult = processes.runResult;
    EXPECT_EQ(chosen(menu("/"), "Open Directory with Terminal"),
              "! Script execution failed: no display; openTerminal /");
    EXPECT_EQ(chosen(menu("~/notes.txt"), "Open File with Tool"),
              "! Script execution failed: no display; run " + tool + "|" + notes);
}

} // namespace kavendra
