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
    ExcelIntegrationTest() { setenv("TMPDIR", home.path("tmp").c_str(), 1); }

    std::string openItem(const std::string& command, ExcelOpenMode mode) {
        return withCalls(outcomeText(excel.openItem(item(command), mode)));
    }
    std::string openTypedPath(const std::string& text, ExcelOpenMode mode) {
        return withCalls(outcomeText(excel.openTypedPath(text, mode)));
    }

    /// Returns the path of the one copy that has been made since the last call, having looked at it.
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
            permissions(directory, std::filesystem::perms(0755)); // so that the test can clear up
        }
        return made;
    }

    std::string workbook = home.path("Book.XLSX");
    std::string copiesDirectory = home.path("tmp/kavendra-excel-readonly");
    std::set<std::string> knownCopies;
};

} // namespace

TEST_F(ExcelIntegrationTest, knowsWorkbooksByTheirExtension) {
    for (const std::string name : {"a.xls", "b.xlsx", "c.XLSM", "d.xlsb", "e.xla", "f.xlam", "g.xlsa"}) {
        home.write(name, "");
        EXPECT_EQ(excelWorkbookOf("'~/" + name + "'"), home.path(name));
        EXPECT_EQ(excelWorkbookOf(item(" ~/" + name)), home.path(name));
    }
    for (const std::string name : {".xlsx", "xlsx", "a.xlsx.csv", "a.xlsxx", "a.xlt"})
        home.write(name, "");
    for (const std::string text :
         {"~/.xlsx", "~/xlsx", "~/a.xlsx.csv", "~/a.xlsxx", "~/a.xlt", "~/missing.xlsx"}) {
        EXPECT_EQ(excelWorkbookOf(text), std::nullopt) << text;
        EXPECT_EQ(excelWorkbookOf(item(text)), std::nullopt) << text;
    }
    EXPECT_EQ(excelWorkbookOf("~/folder.xlsx"), std::nullopt);
    EXPECT_EQ(excelWorkbookOf(item("\"" + workbook + "\"")), std::nullopt) << "quotes belong to the field";
}

TEST_F(ExcelIntegrationTest, theScriptNamesThePathInAString) {
    EXPECT_EQ(excelScript("/a/b c.xlsx", true), "tell application \"Microsoft Excel\"\n"
                                                "    activate\n"
                                                "    open workbook workbook file name \"/a/b c.xlsx\" "
                                                "read only true\n"
                                                "end tell");
    EXPECT_EQ(excelScript("/a\\\"b\"\\", false), "tell application \"Microsoft Excel\"\n"
                                                 "    activate\n"
                                                 "    open workbook workbook file name "
                                                 "\"/a\\\\\\\"b\\\"\\\\\" read only false\n"
                                                 "end tell");
}

TEST_F(ExcelIntegrationTest, opensTheWorkbookOrACopyOfItsOwnInEachMode) {
    installExcel();
    const std::string newSessionOf = "run /usr/bin/open|-n|-a|" + excelPath + "|";
    for (const bool fromItem : {false, true}) {
        const auto opened = [&](const std::string& path, ExcelOpenMode mode) {
            return fromItem ? openItem(path, mode) : openTypedPath(path, mode);
        };
        const std::string report =
            fromItem ? "Opened Command file in Excel " : "Opened search path in Excel ";
        EXPECT_EQ(opened("~/Book.XLSX", newSession), report + "(new session); " + newSessionOf + workbook);
        EXPECT_EQ(newCopy(), "");
        const std::string readOnlyReport = opened("~/Book.XLSX", readOnly);
        EXPECT_EQ(readOnlyReport,
                  report + "(read-only); run /usr/bin/osascript|-e|" + excelScript(newCopy(), true));
        const std::string bothReport = opened(workbook, newSessionReadOnly);
        EXPECT_EQ(bothReport, report + "(new session, read-only); " + newSessionOf + newCopy());
    }
    EXPECT_EQ(knownCopies.size(), 4U);
}

TEST_F(ExcelIntegrationTest, looksForExcelInOnePlace) {
    EXPECT_STREQ(ExcelIntegration::defaultApplicationPath, "/Applications/Microsoft Excel.app");
    EXPECT_EQ(openTypedPath(workbook, readOnly), "Microsoft Excel not found");
    EXPECT_EQ(openItem(workbook, newSession), "Microsoft Excel not found");
    installExcel();
    EXPECT_EQ(openTypedPath("~/folder.xlsx", readOnly), "No Excel file to open");
    EXPECT_EQ(openItem("~/gone.xlsx", readOnly), "No Excel file available in Command");
}

TEST_F(ExcelIntegrationTest, reportsWhatFailsWithItsPath) {
    installExcel();
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "execution error (-1728)\n"};
    EXPECT_EQ(openItem(workbook, newSession),
              "! Script execution failed: execution error (-1728); run /usr/bin/open|-n|-a|" + excelPath +
                  "|" + workbook);
    EXPECT_EQ(openItem("~/folder.xlsx", readOnly), "! " + home.path("folder.xlsx") + ": Is a directory");
    std::filesystem::remove_all(home.path("tmp"));
    home.write("tmp", "a file where the directory should be");
    const std::string failed = openItem(workbook, readOnly);
    EXPECT_EQ(failed, "! " + home.path("tmp") + ": Not a directory");
}

} // namespace kavendra
