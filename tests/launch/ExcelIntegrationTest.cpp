#include "launch/ExcelIntegration.h"

#include "platform/Files.h"
#include "platform/Paths.h"
#include "tests/launch/ActionsFixture.h"
#include "tests/support/Limits.h"

namespace kavendra {

namespace {

using enum ExcelOpenMode;

class ExcelIntegrationTest : public ActionsFixture {
protected:
    ExcelIntegrationTest() { setenv("TMPDIR", home.path("tmp").c_str(), 1); }
    ~ExcelIntegrationTest() override { setenv("TMPDIR", temporaryBefore.c_str(), 1); }

    static LaunchItem item(std::string command) {
        LaunchItem result;
        result.command = std::move(command);
        return result;
    }

    std::string reportOf(const ActionOutcome& outcome) {
        report()(outcome);
        return takeReport();
    }

    std::vector<std::string> copies() {
        std::vector<std::string> paths;
        const auto names =
            listDirectory(home.path("tmp/kavendra-excel-readonly")).value_or(std::vector<std::string>());
        for (const std::string& name : names)
            paths.push_back(home.path("tmp/kavendra-excel-readonly/" + name + "/Book.XLSX"));
        return paths;
    }

    std::string temporaryBefore = temporaryDirectory();
    std::string workbook = home.path("Book.XLSX");
};

std::filesystem::perms permissions(const std::string& path) {
    return std::filesystem::status(path).permissions();
}

} // namespace

TEST_F(ExcelIntegrationTest, knowsWorkbooksByTheirExtension) {
    for (const std::string name : {"a.xls", "b.xlsx", "c.XLSM", "d.xlsb", "e.xla", "f.xlam", "g.xlsa"}) {
        home.write(name, "");
        EXPECT_EQ(excelWorkbookOf("'~/" + name + "'"), home.path(name));
        EXPECT_EQ(excelWorkbookOf(item(" ~/" + name)), home.path(name));
    }
    for (const std::string name : {".xlsx", "xlsx", "a.xlsx.csv", "a.xlsxx", "a.xlt"}) {
        home.write(name, "");
        EXPECT_EQ(excelWorkbookOf("~/" + name), std::nullopt) << name;
        EXPECT_EQ(excelWorkbookOf(item("~/" + name)), std::nullopt) << name;
    }
    EXPECT_EQ(excelWorkbookOf("~/missing.xlsx"), std::nullopt);
    EXPECT_EQ(excelWorkbookOf(item("~/missing.xlsx")), std::nullopt);
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

TEST_F(ExcelIntegrationTest, opensTheWorkbookOrACopyInEachMode) {
    installExcel();
    EXPECT_EQ(reportOf(excel.openSearchPath("~/Book.XLSX", newSession)),
              "Opened search path in Excel (new session); run /usr/bin/open|-n|-a|" + excelPath + "|" +
                  workbook);
    EXPECT_EQ(reportOf(excel.openItem(item("~/Book.XLSX"), newSession)),
              "Opened Command file in Excel (new session); run /usr/bin/open|-n|-a|" + excelPath + "|" +
                  workbook);
    EXPECT_FALSE(exists(home.path("tmp"))) << "nothing was copied";

    const std::string readOnlyReport = reportOf(excel.openItem(item("~/Book.XLSX"), readOnly));
    ASSERT_EQ(copies().size(), 1U);
    const std::string first = copies()[0];
    EXPECT_EQ(readOnlyReport, "Opened Command file in Excel (read-only); run /usr/bin/osascript|-e|" +
                                  excelScript(first, true));
    EXPECT_EQ(home.read(first.substr(home.path().size())), "the workbook");
    EXPECT_EQ(permissions(first), std::filesystem::perms(0444));
    EXPECT_EQ(permissions(std::string(parentPath(first))), std::filesystem::perms(0555));

    const std::string newReport = reportOf(excel.openSearchPath("~/Book.XLSX", newSessionReadOnly));
    ASSERT_EQ(copies().size(), 2U) << "each open has a copy of its own";
    const std::string second = copies()[0] == first ? copies()[1] : copies()[0];
    EXPECT_EQ(newReport, "Opened search path in Excel (new session, read-only); run /usr/bin/open|-n|-a|" +
                             excelPath + "|" + second);
    EXPECT_EQ(reportOf(excel.openItem(item(workbook), newSessionReadOnly)).substr(0, 53),
              "Opened Command file in Excel (new session, read-only)");
    EXPECT_EQ(reportOf(excel.openSearchPath(workbook, readOnly)).substr(0, 41),
              "Opened search path in Excel (read-only); ");
    for (const std::string& copy : copies()) // so that the test can clear up
        chmod(std::string(parentPath(copy)).c_str(), 0755);
}

TEST_F(ExcelIntegrationTest, looksForExcelInOnePlace) {
    EXPECT_STREQ(ExcelIntegration::defaultApplicationPath, "/Applications/Microsoft Excel.app");
    EXPECT_FALSE(excel.canOpenSearchPath(workbook));
    EXPECT_FALSE(excel.canOpenItem(item(workbook)));
    EXPECT_EQ(reportOf(excel.openSearchPath(workbook, readOnly)), "Microsoft Excel not found");
    EXPECT_EQ(reportOf(excel.openItem(item(workbook), newSession)), "Microsoft Excel not found");
    installExcel();
    EXPECT_TRUE(excel.canOpenSearchPath(workbook));
    EXPECT_TRUE(excel.canOpenItem(item(workbook)));
    EXPECT_EQ(reportOf(excel.openSearchPath("~/folder.xlsx", readOnly)), "No Excel file to open");
    EXPECT_EQ(reportOf(excel.openItem(item("~/gone.xlsx"), readOnly)), "No Excel file available in Command");
}

TEST_F(ExcelIntegrationTest, reportsWhatFailsWithItsPath) {
    installExcel();
    processes.runResult = ProgramOutcome{.succeeded = false, .standardError = "execution error (-1728)\n"};
    EXPECT_EQ(reportOf(excel.openItem(item(workbook), newSession)),
              "! Script execution failed: execution error (-1728); run /usr/bin/open|-n|-a|" + excelPath +
                  "|" + workbook);
    const std::string directory = home.path("folder.xlsx");
    EXPECT_EQ(reportOf(excel.openItem(item(directory), readOnly)), "! " + directory + ": Is a directory");
    std::filesystem::remove_all(home.path("tmp"));
    home.write("tmp", "a file where the directory should be");
    const std::string failed = reportOf(excel.openItem(item(workbook), readOnly));
    EXPECT_TRUE(failed.starts_with("! " + home.path("tmp/kavendra-excel-readonly/"))) << failed;
    EXPECT_TRUE(failed.ends_with(": Not a directory")) << failed;
}

} // namespace kavendra
