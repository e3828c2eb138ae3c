#include "app/ItemMenu.h"

#include "tests/launch/LaunchFixture.h"

namespace kavendra {

namespace {

using Column = std::optional<ItemColumn>;

class ItemMenuTest : public LaunchFixture {
protected:
    ItemMenuTest() {
        std::filesystem::create_directories(home.path("data"));
        home.write("data/my items.csv", "");
    }

    Menu menu(const LaunchItem& item, const Column& column = std::nullopt) {
        return itemMenu(item, column, {itemActions, home.path("data"), report(), [] {}, [] {}});
    }

    static LaunchItem item(std::string command, std::string params = {}, std::string from = "my items.csv") {
        return {.id = {},
                .title = "Title",
                .command = std::move(command),
                .params = std::move(params),
                .keywords = "key words",
                .source = std::move(from)};
    }
};

} // namespace

TEST_F(ItemMenuTest, enablesWhatTheRowIsGoodFor) {
    const std::string noExcel = "Open in Excel [(Read-Only), (New Session), (New Session + Read-Only)], -, ";
    const std::string end = ", -, Reload Data Files, Open Data Directory";
    EXPECT_EQ(menuText(menu(item("~/notes.txt"), ItemColumn::command)),
              "Open Parent Directory, "
              "Copy to Clipboard [Copy Command to Execute, Copy Cell Value, Copy Row], " +
                  noExcel + "Open Data File (my items.csv)" + end);
    EXPECT_EQ(menuText(menu(item("", "", "(Built-in)"), ItemColumn::command)),
              "(Open Parent Directory), "
              "Copy to Clipboard [(Copy Command to Execute), (Copy Cell Value), Copy Row], " +
                  noExcel + "(Open Data File ((Built-in)))" + end);
    EXPECT_EQ(menuText(menu(item("~/Book.XLSX", "", "gone %1.csv"))),
              "Open Parent Directory, "
              "Copy to Clipboard [Copy Command to Execute, (Copy Cell Value), Copy Row], " +
                  noExcel + "(Open Data File (gone %1.csv))" + end);
    installExcel();
    EXPECT_EQ(menuText(menu(item("~/Book.XLSX"))[2].submenu),
              "Read-Only, New Session, New Session + Read-Only");
    EXPECT_EQ(menuText(menu(item("~/missing.xlsx"))[2].submenu),
              "(Read-Only), (New Session), (New Session + Read-Only)");
}

TEST_F(ItemMenuTest, copiesWhatTheActionSays) {
    const std::string command = "Copied Command to Execute; copyText ";
    struct Case {
        std::string command, params, copied;
    };
    for (const Case& c : {
             Case{" ls ", "\t-l a  b\n", command + "ls -l a  b"},
             Case{" /a b\"c ", "", command + "\"/a b\"c\""},
             Case{"/a\u3000b", "c", command + "\"/a\u3000b\" c"},
             Case{" ", " -l ", command + "-l"},
             Case{"ls", " ", command + "ls"},
             Case{" ", "\n", "Nothing to copy"},
         })
        EXPECT_EQ(chosen(menu(item(c.command, c.params)), "Copy Command to Execute"), c.copied);

    const LaunchItem row = item(" a\tb ", "line\nbreak");
    for (const auto& [column, copied] :
         std::map<ItemColumn, std::string>{{ItemColumn::title, "Title"},
                                           {ItemColumn::command, " a\tb "},
                                           {ItemColumn::params, "line\nbreak"},
                                           {ItemColumn::keywords, "key words"},
                                           {ItemColumn::source, "my items.csv"}})
        EXPECT_EQ(chosen(menu(row, column), "Copy Cell Value"), "Copied Cell Value; copyText " + copied);
    EXPECT_EQ(chosen(menu(row), "Copy Cell Value"), "Nothing to copy");
    EXPECT_EQ(chosen(menu(row), "Copy Row"),
              "Copied Row; copyText Title\t a\tb \tline\nbreak\tkey words\tmy items.csv");
    EXPECT_EQ(chosen(menu(LaunchItem{}), "Copy Row"), "Copied Row; copyText \t\t\t\t");
}

TEST_F(ItemMenuTest, opensTheDirectoryOfWhatTheRowNames) {
    const std::string none = "No parent directory available";
    const std::string opened = "Opened parent directory; showDirectory ";
    struct Case {
        std::string command, params;
        Column column;
        std::string outcome;
    };
    for (const Case& c : {
             Case{" ~/notes.txt ", "", std::nullopt, opened + home.path()},
             Case{notes, inner, ItemColumn::command, opened + home.path()},
             Case{notes, inner, ItemColumn::params, opened + folder},
             Case{notes, inner, std::nullopt, opened + home.path()},
             Case{notes, "~/missing", ItemColumn::params, opened + home.path()},
             Case{"tool", inner, ItemColumn::params, opened + folder},
             Case{"tool", inner, ItemColumn::title, none},
             Case{inner + "/", "", ItemColumn::source, opened + folder},
             Case{"/", "", ItemColumn::command, opened + "/"},
             Case{"\"" + notes + "\"", "", ItemColumn::command, none},
             Case{"", "", ItemColumn::params, none},
         }) {
        SCOPED_TRACE(c.command + " | " + c.params);
        EXPECT_EQ(chosen(menu(item(c.command, c.params), c.column), "Open Parent Directory"), c.outcome);
    }
    desktop.accepts = false;
    EXPECT_EQ(chosen(menu(item(inner)), "Open Parent Directory"),
              "! Failed to open in Finder: " + folder + "; showDirectory " + folder);
}

TEST_F(ItemMenuTest, opensTheDataFileOfTheRow) {
    const auto openedFrom = [this](const std::string& source) {
        return chosen(menu(item("", "", source)), "Open Data File (" + source + ")");
    };
    const std::string request = "; openFile " + home.path("data/my items.csv");
    EXPECT_EQ(openedFrom("my items.csv"), "Opened source file" + request);
    EXPECT_EQ(openedFrom("(Built-in)"), "No source file available");
    EXPECT_EQ(openedFrom("gone.csv"), "No source file available");
    desktop.accepts = false;
    EXPECT_EQ(openedFrom("my items.csv"), "Failed to open source file" + request);
}

} // namespace kavendra
