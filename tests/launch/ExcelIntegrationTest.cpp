#include "launch/ExcelIntegration.h"

#include "platform/Files.h"
#include "tests/launch/LaunchFixture.h"

#include <set>

namespace kavendra {

namespace {

using enum ExcelOpenMode;

LaunchItem item(std::string command) {
    LaunchItem result;
    result.command = std::move(command);
    return result;
}

class ExcelIntegrationTest : public LaunchFixture {
protected:
    ExcelIntegrationTest() {
        setenv("TMPDIR", home.path("tmp").c_str(), 1);
        std::filesystem::create_directories(excelPath);
    }

    /// Checks the copy that was made since the last call and returns its path, "" if there is none.
    std::string newCopy() {
        std::string made;
        for (const std::string& name : listDirectory(copiesDirectory).value_or(std::vector<std::string>())) {
            if (!knownCopies.insert(name).second)
                continue;
            EXPECT_EQ(made, "") << "more than one copy";
            const std::filesystem::path directory = copiesDirectory + "/" + name;
            made = directory / "Book.XLSX";
            EXPECT_EQ(std::filesystem::status(made).permissions(), std::filesystem::perms(0444));
            EXPECT_EQ(std::filesystem::status(directory).permissions(), std::filesystem::perms(0555));
            EXPECT_EQ(std::filesystem::status(copiesDirectory).permissions(), std::filesystem::perms(0700));
            EXPECT_EQ(home.read(made.substr(home.path().size())), "the workbook");
            permissions(directory, std::filesystem::perms(0755)); // so that the test can remove it
        }
        return made;
    }

    const std::string workbook = home.path("Book.XLSX"), excelPath = home.path("Microsoft Excel.app"),
                      copiesDirectory = home.path("tmp/kavendra-excel-readonly");
    ExcelIntegration excel{
        launcher, MacTools{.open = macTools().open, .osascript = macTools().osascript, .excel = excelPath}};
    std::set<std::string> knownCopies;
};

} // namespace

TEST_F(ExcelIntegrationTest, recognizesWorkbooksByTheirExtension) {
    for (const std::string name : {"a.xls", "b.xlsx", "c.XLSM", "d.xlsb", "e.xla", "f.xlam", "g.xlsa"}) {
        home.write(name, "");
        EXPECT_EQ(excelWorkbookOf("'~/" + name + "'"), home.path(name));
        EXPECT_EQ(excelWorkbookOf(item(" ~/" + name)), home.path(name));
    }
    for (const std::string name : {".xlsx", "xlsx", "a.xlsx.csv", "a.xlsxx", "a.xlt"}) {
        home.write(name, "");
        EXPECT_EQ(excelWorkbookOf("~/" + name), std::nullopt) << name;
    }
    for (const char* path : {"~/missing.xlsx", "~/folder.xlsx"})
        EXPECT_EQ(excelWorkbookOf(path), std::nullopt) << path;
    EXPECT_EQ(excelWorkbookOf(item("\"" + workbook + "\"")), std::nullopt) << "no quotes around a command";
}

TEST_F(ExcelIntegrationTest, opensTheWorkbookOrACopyInEachMode) {
    const std::string run = "; run /usr/bin/open|-n|-a|" + excelPath + "|";
    const std::string opened = "Opened Command file in Excel ";
    EXPECT_EQ(text(excel.openItem(item("~/Book.XLSX"), newSession)),
              opened + "(new session)" + run + workbook);
    EXPECT_EQ(newCopy(), "");
    const std::string readOnlyOutcome = text(excel.openItem(item(workbook), readOnly));
    EXPECT_EQ(readOnlyOutcome, opened + "(read-only); run /usr/bin/osascript|-e|" + excelScript(newCopy()));
    for (std::size_t copies = 2; copies < 4; ++copies) {
        const std::string outcome = text(excel.openTypedPath("~/Book.XLSX", newSessionReadOnly));
        EXPECT_EQ(outcome, "Opened search path in Excel (new session, read-only)" + run + newCopy());
        EXPECT_EQ(knownCopies.size(), copies) << "each open makes a copy";
    }
    EXPECT_EQ(macTools().excel, "/Applications/Microsoft Excel.app");
}

TEST_F(ExcelIntegrationTest, scriptEscapesThePath) {
    EXPECT_EQ(excelScript("/a\\\"b c\"\\"), "tell application \"Microsoft Excel\"\n"
                                            "    activate\n"
                                            "    open workbook workbook file name "
                                            "\"/a\\\\\\\"b c\\\"\\\\\" read only true\n"
                                            "end tell");
}

TEST_F(ExcelIntegrationTest, reportsFailuresOfTheCopyAndOfTheProgram) {
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "reason"};
    EXPECT_TRUE(text(excel.openItem(item(workbook), newSession)).starts_with("! Script execution failed: "));
    EXPECT_EQ(text(excel.openItem(item("~/folder.xlsx"), readOnly)),
              "! " + home.path("folder.xlsx") + ": Is a directory");
    std::filesystem::remove_all(home.path("tmp"));
    home.write("tmp", "a file where the directory should be");
    EXPECT_EQ(text(excel.openItem(item(workbook), readOnly)), "! " + home.path("tmp") + ": Not a directory");
}

} // namespace kavendra
