#include "app/WindowMenus.h"
#include "tests/app/ContentViewFixture.h"
#include "tests/support/MenuText.h"

#include <gtest/gtest.h>

#include <map>

namespace kavendra {

namespace {

/// The configuration directory is the home directory too; it holds a folder, a file, a workbook and a
/// program.
class MenuActionsTest : public ContentViewFixture {
protected:
    MenuActionsTest() {
        setenv("HOME", home.c_str(), 1);
        std::filesystem::create_directories(inner);
        for (const char* file : {"notes.txt", "Book.XLSX"})
            configuration.write(file, "");
        configuration.writeProgram("tool");
        start();
        using enum SearchPathActionTargetType;
        LaunchSettings settings = state().appSettings;
        settings.searchPathActions = {
            {.appName = "Tool 100%", .binaryPath = " ~/tool", .targetType = directory},
            {.appName = "Tool", .binaryPath = "tool", .targetType = file},
            {.appName = "Gone", .binaryPath = "no-such-tool", .targetType = file},
            {.appName = "Gone", .binaryPath = "~/notes.txt", .targetType = directory}};
        content.saveSettings(settings);
    }

    static LaunchItem item(std::string command, std::string params = {}, std::string source = "items.csv") {
        return {.id = {},
                .title = "Title",
                .command = std::move(command),
                .params = std::move(params),
                .keywords = "key words",
                .source = std::move(source)};
    }

    Menu itemMenu(const LaunchItem& item, std::optional<ItemColumn> column = std::nullopt) {
        return menus.itemMenu(item, column);
    }

    Menu typedPathMenu(const std::string& searchText) {
        content.setSearchText(searchText);
        return menus.typedPathMenu();
    }

    /// Chooses an entry and returns its report, a failure after "! ", and the calls that it made. The text is
    /// in parentheses if the entry is disabled.
    std::string outcome(const Menu& menu, const std::string& title) {
        content.setStatus("nothing reported");
        choose(menu, title);
        std::string text = (state().errorDialogMessage ? "! " : "") + status();
        content.dismissErrorDialog();
        for (auto* calls : {&desktop.calls, &processes.calls})
            for (const std::string& call : std::exchange(*calls, {}))
                text += "; " + call;
        const MenuEntry* entry = findEntry(menu, title);
        return entry && entry->isEnabled ? text : "(" + text + ")";
    }

    const std::string home = configuration.path(), folder = home + "/folder", inner = folder + "/inner",
                      notes = home + "/notes.txt", tool = home + "/tool", excel = home + "/Excel.app";
    WindowMenus menus{content, desktop, processes, executor,
                      MacTools{.open = macTools().open, .osascript = {}, .excel = excel}};
};

} // namespace

TEST_F(MenuActionsTest, copyTextsOfAnItem) {
    const std::string copied = "Copied Command to Execute; copyText ";
    using Case = std::array<std::string, 3>;
    for (const auto& [command, params, expected] : {
             Case{" ls ", "\t-l a  b\n", copied + "ls -l a  b"},
             Case{" /a b\"c ", "", copied + "\"/a b\"c\""},
             Case{"/a\u3000b", "c", copied + "\"/a\u3000b\" c"},
             Case{" ", " -l ", copied + "-l"},
             Case{"ls", " ", copied + "ls"},
             Case{" ", "\n", "(Nothing to copy)"},
         })
        EXPECT_EQ(outcome(itemMenu(item(command, params)), "Copy Command to Execute"), expected);

    const LaunchItem row = item(" a\tb ", "line\nbreak");
    for (const auto& [column, text] : std::map<ItemColumn, std::string>{{ItemColumn::title, "Title"},
                                                                        {ItemColumn::command, " a\tb "},
                                                                        {ItemColumn::params, "line\nbreak"},
                                                                        {ItemColumn::keywords, "key words"},
                                                                        {ItemColumn::source, "items.csv"}})
        EXPECT_EQ(outcome(itemMenu(row, column), "Copy Cell Value"), "Copied Cell Value; copyText " + text);
    EXPECT_EQ(outcome(itemMenu(row), "Copy Cell Value"), "(Nothing to copy)") << "no column";
    EXPECT_EQ(outcome(itemMenu(row), "Copy Row"),
              "Copied Row; copyText Title\t a\tb \tline\nbreak\tkey words\titems.csv");
    EXPECT_EQ(outcome(itemMenu(LaunchItem{}), "Copy Row"), "Copied Row; copyText \t\t\t\t");
}

TEST_F(MenuActionsTest, openTheParentDirectoryOfWhatTheItemNames) {
    const std::string none = "(No parent directory available)";
    const std::string opened = "Opened parent directory; showDirectory ";
    using Case = std::tuple<std::string, std::string, std::optional<ItemColumn>, std::string>;
    for (const auto& [command, params, column, expected] : {
             Case{" ~/notes.txt ", "", std::nullopt, opened + home},
             Case{notes, inner, ItemColumn::command, opened + home},
             Case{notes, inner, ItemColumn::params, opened + folder},
             Case{notes, inner, std::nullopt, opened + home},
             Case{notes, "~/missing", ItemColumn::params, opened + home},
             Case{"tool", inner, ItemColumn::params, opened + folder},
             Case{"tool", inner, ItemColumn::title, none},
             Case{inner + "/", "", ItemColumn::source, opened + folder},
             Case{"/", "", ItemColumn::command, opened + "/"},
             Case{"\"" + notes + "\"", "", ItemColumn::command, none},
             Case{"", "", ItemColumn::params, none},
         })
        EXPECT_EQ(outcome(itemMenu(item(command, params), column), "Open Parent Directory"), expected)
            << command << " | " << params;
    desktop.accepts = false;
    EXPECT_EQ(outcome(itemMenu(item(inner)), "Open Parent Directory"),
              "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
}

TEST_F(MenuActionsTest, openTheDataFileOfAnItem) {
    const auto opened = [this](const std::string& source) {
        return outcome(itemMenu(item("", "", source)), "Open Data File (" + source + ")");
    };
    const std::string request = "; openFile " + configuration.path("data/items.csv");
    EXPECT_EQ(opened("items.csv"), "Opened source file" + request);
    configuration.write("data/(Built-in)", "");
    EXPECT_EQ(opened("(Built-in)"), "(No source file available)");
    EXPECT_EQ(opened("gone.csv"), "(No source file available)");
    desktop.accepts = false;
    EXPECT_EQ(opened("items.csv"), "Failed to open source file" + request);
}

TEST_F(MenuActionsTest, openWorkbooksInExcelWhereItIsInstalledAndLookForTheTargetAgain) {
    const std::string run = "; run /usr/bin/open|-n|-a|" + excel + "|" + home + "/Book.XLSX";
    EXPECT_EQ(outcome(itemMenu(item("~/Book.XLSX")), "New Session"), "(Microsoft Excel not found)");
    EXPECT_EQ(outcome(typedPathMenu("~/Book.XLSX"), "Read-Only"), "(Microsoft Excel not found)");
    std::filesystem::create_directories(excel);
    EXPECT_EQ(outcome(itemMenu(item("~/Book.XLSX")), "New Session"),
              "Opened Command file in Excel (new session)" + run);
    EXPECT_EQ(outcome(typedPathMenu("~/Book.XLSX"), "New Session"),
              "Opened search path in Excel (new session)" + run);

    const Menu typed = typedPathMenu("~/Book.XLSX");
    const Menu row = itemMenu(item("~/Book.XLSX"));
    content.setSearchText("~/folder");
    std::filesystem::remove(home + "/Book.XLSX");
    EXPECT_EQ(outcome(typed, "Open Directory with Finder"), "No directory to open");
    EXPECT_EQ(outcome(typed, "Copy Filename"), "No filename to copy");
    EXPECT_EQ(outcome(typed, "Open Directory with Tool 100%"), "No directory to open");
    EXPECT_EQ(outcome(typed, "Read-Only"), "No Excel file to open");
    EXPECT_EQ(outcome(row, "Read-Only"), "No Excel file available in Command");
    EXPECT_EQ(outcome(row, "Open Parent Directory"), "No parent directory available");
}

TEST_F(MenuActionsTest, actOnTheTypedPathOrItsDirectory) {
    const std::string runTool = "; run " + tool + "|";
    const std::string associated = "Open File with Associated App", finder = "Open Directory with Finder",
                      terminal = "Open Directory with Terminal";
    using Case = std::array<std::string, 3>;
    for (const auto& [text, title, expected] : {
             Case{"\"~/notes.txt\"", associated, "Opened path; openFile " + notes},
             Case{"~/folder", associated, "(Opened path; openFile " + folder + ")"},
             Case{"~/missing", associated, "(No path to open)"},
             Case{"~/notes.txt", "Open File with Tool", "Opened file with Tool" + runTool + notes},
             Case{"~/folder", "Open File with Tool", "(No file to open)"},
             Case{"~/notes.txt", "Open File with Gone", "(Gone command not found)"},
             Case{"~/notes.txt", finder, "Opened directory in Finder; showDirectory " + home},
             Case{"", finder, "(No directory to open)"},
             Case{"~/folder", terminal, "Opened directory in Terminal; openTerminal " + folder},
             Case{"~/missing", terminal, "(No directory to open)"},
             Case{"~/folder/", "Open Directory with Tool 100%",
                  "Opened directory with Tool 100%" + runTool + folder},
             Case{"", "Open Directory with Tool 100%", "(No directory to open)"},
             Case{"~/folder", "Open Directory with Gone", "(Gone command not found)"},
             Case{"~/notes.txt", "Copy Directory", "Copied directory; copyText " + home},
             Case{"'~/folder/'", "Copy Directory", "Copied directory; copyText " + folder},
             Case{"~/missing", "Copy Directory", "(No directory to copy)"},
             Case{"~/notes.txt", "Copy Filename", "Copied filename; copyText notes.txt"},
             Case{"~/folder/", "Copy Filename", "Copied filename; copyText folder"},
             Case{"~/missing", "Copy Filename", "(No filename to copy)"},
         })
        EXPECT_EQ(outcome(typedPathMenu(text), title), expected) << text << " | " << title;

    desktop.accepts = false;
    desktop.terminalResult = std::unexpected(Error{folder + ": Permission denied"});
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = " no display\n"};
    const std::string failed = "! Script execution failed: no display; ";
    EXPECT_EQ(outcome(typedPathMenu(notes), associated), "Failed to open path; openFile " + notes);
    EXPECT_EQ(outcome(typedPathMenu(folder), finder),
              "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
    EXPECT_EQ(outcome(typedPathMenu(folder), terminal),
              "! " + folder + ": Permission denied; openTerminal " + folder);
    desktop.terminalResult = processes.runResult;
    EXPECT_EQ(outcome(typedPathMenu("/"), terminal), failed + "openTerminal /");
    EXPECT_EQ(outcome(typedPathMenu(notes), "Open File with Tool"), failed + "run " + tool + "|" + notes);
}

} // namespace kavendra
