#include "launch/ItemMenu.h"

#include "tests/launch/ActionsFixture.h"

namespace kavendra {

namespace {

class ItemMenuTest : public ActionsFixture {
protected:
    ItemMenuTest() {
        std::filesystem::create_directories(home.path("data"));
        home.write("data/my items.csv", "");
    }

    ItemMenuSource source() {
        return {itemActions, home.path("data"), report(), [this] { reported = "reload"; },
                [this] { reported = "open data directory"; }};
    }

    Menu menu(const LaunchItem& item, const std::optional<std::string>& column = std::nullopt) {
        return itemMenu(item, column, source());
    }

    std::string chosen(const LaunchItem& item, const std::string& title,
                       const std::optional<std::string>& column = std::nullopt) {
        choose(menu(item, column), title);
        return takeReport();
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
    const std::string end = ", -, Reload Data Files, Open Data Directory";
    const std::string noExcel = "Open in Excel [(Read-Only), (New Session), (New Session + Read-Only)]";
    const std::string copies = "Copy to Clipboard [Copy Command to Execute, Copy Cell Value, Copy Row]";
    EXPECT_EQ(menuText(menu(item("~/notes.txt"), "Command")), "Open Parent Directory, " + copies + ", " +
                                                                  noExcel +
                                                                  ", -, Open Data File (my items.csv)" + end);
    EXPECT_EQ(menuText(menu(item("", "", "(Built-in)"), "Command")),
              "(Open Parent Directory), Copy to Clipboard [(Copy Command to Execute), (Copy Cell Value), "
              "Copy Row], " +
                  noExcel + ", -, (Open Data File ((Built-in)))" + end);
    EXPECT_EQ(menuText(menu(item("~/Book.XLSX", "", "gone %1.csv"))),
              "Open Parent Directory, Copy to Clipboard [Copy Command to Execute, (Copy Cell Value), Copy "
              "Row], " +
                  noExcel + ", -, (Open Data File (gone %1.csv))" + end);
    installExcel();
    EXPECT_EQ(menuText(menu(item("~/Book.XLSX"))[2].submenu),
              "Read-Only, New Session, New Session + Read-Only");
    EXPECT_EQ(menuText(menu(item("~/missing.xlsx"))[2].submenu),
              "(Read-Only), (New Session), (New Session + Read-Only)");
    EXPECT_EQ(menuText(generalMenu(source())), "Reload Data Files, Open Data Directory");
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
        EXPECT_EQ(chosen(item(c.command, c.params), "Copy Command to Execute"), c.copied);

    const LaunchItem row = item(" a\tb ", "line\nbreak");
    for (const auto& [column, copied] : std::vector<std::pair<std::optional<std::string>, std::string>>{
             {"Title", "Copied Cell Value; copyText Title"},
             {"Command", "Copied Cell Value; copyText  a\tb "},
             {"Params", "Copied Cell Value; copyText line\nbreak"},
             {"Keywords", "Copied Cell Value; copyText key words"},
             {"Source", "Copied Cell Value; copyText my items.csv"},
             {"title", "Nothing to copy"},
             {std::nullopt, "Nothing to copy"}})
        EXPECT_EQ(chosen(row, "Copy Cell Value", column), copied);

    EXPECT_EQ(chosen(row, "Copy Row"),
              "Copied Row; copyText Title\t a\tb \tline\nbreak\tkey words\tmy items.csv");
    EXPECT_EQ(chosen(LaunchItem{}, "Copy Row"), "Copied Row; copyText \t\t\t\t");
}

TEST_F(ItemMenuTest, opensTheDirectoryOfWhatTheRowNames) {
    const std::string notes = home.path("notes.txt");
    const std::string inner = home.path("folder/inner");
    const std::string none = "No parent directory available";
    const std::string opened = "Opened parent directory; showDirectory ";
    struct Case {
        std::string command, params;
        std::optional<std::string> column;
        std::string reported;
    };
    for (const Case& c : {
             Case{" ~/notes.txt ", "", std::nullopt, opened + home.path()},
             Case{notes, inner, "Command", opened + home.path()},
             Case{notes, inner, "Params", opened + home.path("folder")},
             Case{notes, inner, std::nullopt, opened + home.path()},
             Case{notes, "~/missing", "Params", opened + home.path()},
             Case{"tool", inner, "Params", opened + home.path("folder")},
             Case{"tool", inner, "Title", none},
             Case{inner + "/", "", "Source", opened + home.path("folder")},
             Case{"/", "", "Command", opened + "/"},
             Case{"\"" + notes + "\"", "", "Command", none},
             Case{"", "", "Params", none},
         }) {
        SCOPED_TRACE(c.command + " | " + c.params);
        EXPECT_EQ(chosen(item(c.command, c.params), "Open Parent Directory", c.column), c.reported);
    }
    desktop.accepts = false;
    EXPECT_EQ(chosen(item(inner), "Open Parent Directory"),
              "! Failed to open in Finder: " + home.path("folder") + "; showDirectory " +
                  home.path("folder"));
}

TEST_F(ItemMenuTest, opensTheDataFileOfTheRow) {
    const std::string file = home.path("data/my items.csv");
    EXPECT_EQ(chosen(item(""), "Open Data File (my items.csv)"), "Opened source file; openFile " + file);
    EXPECT_EQ(chosen(item("", "", "(Built-in)"), "Open Data File ((Built-in))"), "No source file available");
    EXPECT_EQ(chosen(item("", "", "gone.csv"), "Open Data File (gone.csv)"), "No source file available");
    desktop.accepts = false;
    EXPECT_EQ(chosen(item(""), "Open Data File (my items.csv)"),
              "Failed to open source file; openFile " + file);
    EXPECT_EQ(chosen(item(""), "Reload Data Files"), "reload");
    EXPECT_EQ(chosen(item(""), "Open Data Directory"), "open data directory");
}

} // namespace kavendra
