#include "platform/desktop/FreedesktopDesktop.h"

#include "tests/support/ProcessTable.h"
#include "tests/support/TestBus.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestExecutors.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>

namespace kavendra {

namespace {

constexpr TestService::Description fileManagerService{
    .name = "org.freedesktop.FileManager1",
    .path = "/org/freedesktop/FileManager1",
    .interface = "org.freedesktop.FileManager1",
    .members =
        "<method name='ShowFolders'><arg type='as' direction='in'/><arg type='s' direction='in'/></method>"};

/// Makes the desktop before the first test of the program, because GIO reads the environment once.
class DesktopForAllTests : public testing::Environment {
public:
    void SetUp() override { desktop = std::make_unique<TestDesktop>(); }
    void TearDown() override { desktop.reset(); }

    std::unique_ptr<TestDesktop> desktop;
};

const auto* const surroundingsOfAllTests =
    static_cast<DesktopForAllTests*>(testing::AddGlobalTestEnvironment(new DesktopForAllTests));

class FreedesktopDesktopTest : public testing::Test {
protected:
    /// Writes the desktop entry of an application and returns its path.
    std::string writeEntry(const std::string& name, const std::string& keys) const {
        return directory.write(name, "[Desktop Entry]\nType=Application\nName=x\n" + keys + "\n");
    }

    std::string takeRecord() const { return surroundings.takeRecord(); }

    TestDesktop& surroundings = *surroundingsOfAllTests->desktop;
    const std::string recorder = "\"" + surroundings.path("bin/record") + "\" ";
    TemporaryDirectory directory;
    Processes processes{{"PATH=/usr/bin:/bin", "MARK=a = b"}};
    HoldingExecutor executor;
    FreedesktopDesktop desktop{processes, executor};
};

} // namespace

TEST_F(FreedesktopDesktopTest, opensWithTheDefaultApplication) {
    EXPECT_TRUE(desktop.openURL("https://example.org/a%20b?c=d&e#f"));
    EXPECT_EQ(takeRecord(), "browser\thttps://example.org/a%20b?c=d&e#f\n");
    EXPECT_TRUE(desktop.openFile(directory.write("50% 日本.txt", "text")));
    EXPECT_EQ(takeRecord(), "editor\t" + directory.path("50% 日本.txt") + "\n");

    EXPECT_FALSE(desktop.openURL("no-such-scheme://example.org/"));
    EXPECT_FALSE(desktop.openURL(std::string("https://a\0b", 11)));
    EXPECT_FALSE(desktop.openFile(directory.write("picture.png", "\x89PNG\r\n\x1a\n")));
    EXPECT_FALSE(desktop.openFile(directory.path("missing.txt")));
    EXPECT_EQ(surroundings.read("record"), "");
}

TEST_F(FreedesktopDesktopTest, applicationGetsOnlyTheGivenEnvironmentAndIsDetached) {
    setenv("ADDED_LATER", "1", 1);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_TRUE(desktop.openURL("http://example.org/"));
    std::signal(SIGXFSZ, handler);
    ASSERT_NE(takeRecord(), "");
    std::multiset<std::string> environment;
    std::istringstream entries(surroundings.read("record.environ"));
    for (std::string entry; std::getline(entries, entry, '\0');)
        if (!entry.starts_with("GIO_LAUNCHED_")) // GIO adds variables with the desktop entry.
            environment.insert(entry);
    EXPECT_EQ(environment, (std::multiset<std::string>{"MARK=a = b", "PATH=/usr/bin:/bin"}));
    EXPECT_TRUE(isDetached(surroundings.read("record.status"))) << surroundings.read("record.status");
    EXPECT_TRUE(eventually([] { return !hasZombieChild(); }));
}

TEST_F(FreedesktopDesktopTest, opensAnAddressWithAnApplication) {
    const std::string url = "https://example.org/";
    for (const std::string& application : {surroundings.path("data/applications/test-other-browser.desktop"),
                                           std::string("test-other-browser.desktop")}) {
        EXPECT_TRUE(desktop.isApplication(application));
        EXPECT_TRUE(desktop.openURLWithApplication(url, application));
        EXPECT_EQ(takeRecord(), "other-browser\t" + url + "\n");
    }
    // Applications that cannot open an address, and paths that are no application.
    std::filesystem::create_directories(directory.path("Mail.App"));
    std::filesystem::create_directories(directory.path("directory.desktop"));
    for (const auto& [path, isApplication] : std::vector<std::pair<std::string, bool>>{
             {directory.path("Mail.App"), true},
             {surroundings.path("data/applications/test-takes-no-addresses.desktop"), true},
             {directory.write("file.app", ""), false},
             {directory.path("missing.app"), false},
             {directory.path(), false},
             {directory.path("directory.desktop"), false},
             {directory.write("broken.desktop", "[Desktop"), false},
             {directory.path("missing.desktop"), false},
             {"no-such.desktop", false},
             {"test-browser", false},
             {std::string("test-browser.desktop\0", 21), false},
             {"", false},
         }) {
        EXPECT_EQ(desktop.isApplication(path), isApplication) << path;
        EXPECT_FALSE(desktop.openURLWithApplication(url, path)) << path;
    }
    EXPECT_EQ(surroundings.read("record"), "");
}

TEST_F(FreedesktopDesktopTest, startsAnApplicationWithDocuments) {
    const std::string notes = directory.write("a b%.txt", ""), url = "ftp://example.org/a%20b";
    const std::string any = writeEntry("any.desktop", "Exec=" + recorder + "any %U"),
                      files = writeEntry("files.desktop", "Exec=" + recorder + "files %F"),
                      none = writeEntry("none.desktop", "Exec=" + recorder + "none");
    struct Case {
        std::string application;
        std::vector<std::string> documents;
        std::string record; // empty when the application does not open the documents
    };
    for (const Case& c : {
             Case{"test-browser.desktop", {}, "browser\n"},
             Case{any, {notes, url}, "any\t" + notes + "\t" + url + "\n"},
             Case{files, {notes, directory.path()}, "files\t" + notes + "\t" + directory.path() + "\n"},
             Case{none, {}, "none\n"},
             Case{files, {notes, url}, ""},
             Case{none, {notes}, ""},
             Case{any, {directory.path("missing")}, ""},
             Case{any, {"--option"}, ""},
             Case{directory.path("missing.desktop"), {}, ""},
             Case{writeEntry("link.desktop", "Type=Link\nURL=" + url), {}, ""},
             Case{writeEntry("not-installed.desktop", "Exec=true\nTryExec=/no/such/program"), {}, ""},
             Case{directory.write("large.desktop", std::string(2 << 20, '\n')), {}, ""},
         }) {
        SCOPED_TRACE(c.application + testing::PrintToString(c.documents));
        EXPECT_EQ(desktop.canStartApplication(c.application, c.documents), !c.record.empty());
        if (c.record.empty())
            continue;
        EXPECT_TRUE(desktop.startApplication(c.application, c.documents));
        EXPECT_EQ(takeRecord(), c.record);
    }
    ASSERT_EQ(mkfifo(directory.path("pipe.desktop").c_str(), 0600), 0);
    EXPECT_FALSE(desktop.canStartApplication(directory.path("pipe.desktop"), {})) << "and does not wait";

    std::filesystem::create_directories(directory.path("work"));
    ASSERT_TRUE(desktop.startApplication(
        writeEntry("work.desktop", "Path=" + directory.path("work") + "\nExec=sh -c \"pwd > where\""), {}));
    EXPECT_TRUE(eventually([&] { return directory.read("work/where") == directory.path("work") + "\n"; }));
}

TEST_F(FreedesktopDesktopTest, startsAnApplicationThroughItsServiceElseItsProgram) {
    constexpr TestService::Description service{
        .name = "org.example.Test-App",
        .path = "/org/example/Test_App",
        .interface = "org.freedesktop.Application",
        .members =
            "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
            "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"};
    const std::string entry =
        writeEntry("org.example.Test-App.desktop", "DBusActivatable=true\nExec=" + recorder + "program %U");
    EXPECT_TRUE(desktop.startApplication(entry, {})) << "without a bus";
    EXPECT_EQ(takeRecord(), "program\n");
    const TestBus bus;
    EXPECT_TRUE(desktop.startApplication(entry, {"ftp://example.org/"})) << "without the service";
    EXPECT_EQ(takeRecord(), "program\tftp://example.org/\n");
    const TestService application(bus, service, TestService::Manner::obliging);
    EXPECT_TRUE(desktop.startApplication(entry, {}));
    EXPECT_TRUE(desktop.startApplication(entry, {"ftp://example.org/", directory.path()}));
    EXPECT_EQ(application.calls(), (std::vector<std::string>{"({},)", "(['ftp://example.org/', 'file://" +
                                                                          directory.path() + "'], {})"}));
    EXPECT_EQ(surroundings.read("record"), "");
}

TEST_F(FreedesktopDesktopTest, usesTheChosenTerminal) {
    const std::string entry = writeEntry("tool.desktop", "Terminal=true\nExec=sh \"a b\" 50%% %f");
    const std::string place = directory.path("-a \"b\"\n\xFF");
    std::filesystem::create_directories(place);
    const std::string programs = directory.path("50% a=b"); // the Exec key must quote this
    // The terminal does not end before the test has created the file "go".
    const std::string script = "#!/bin/sh\nwhile [ ! -e '" + directory.path("go") +
                               "' ]; do sleep 0.05; done\npwd > '" + directory.path("place") +
                               "'\nprintf '<%s>' \"${0##*/}\" \"$@\" > '" + directory.path("record") + "'\n";
    Processes withTerminals{{"PATH=" + programs + ":/usr/bin:/bin"}};
    FreedesktopDesktop terminals(withTerminals, executor);
    const auto records = [&](const std::string& words) {
        directory.write("go", "");
        const bool isRecorded = eventually([&] { return directory.read("record") == words; });
        std::filesystem::remove(directory.path("go"));
        std::filesystem::remove(directory.path("record"));
        return isRecorded;
    };
    for (const std::string words : {"<x-terminal-emulator><-e>", "<xdg-terminal-exec>"}) {
        const std::string name = words.substr(1, words.find('>') - 1);
        directory.writeProgram("50% a=b/" + name, script);
        ASSERT_TRUE(terminals.startApplication(entry, {entry}));
        EXPECT_TRUE(records(words + "<sh><a b><50%><" + entry + ">")) << name;
        const auto terminal = terminals.openTerminal(place);
        ASSERT_TRUE(terminal && terminal->succeeded) << name;
        EXPECT_TRUE(records("<" + name + ">")) << name;
        EXPECT_EQ(directory.read("place"), place + "\n");
    }
    const auto opened = terminals.openTerminal(directory.path("missing"));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().description, directory.path("missing") + ": No such file or directory");
}

TEST_F(FreedesktopDesktopTest, findsWhatBuiltinItemsMeanHere) {
    const std::string home = directory.path("home"), programs = directory.path("programs");
    for (const std::string& path : {home + "/書類", home + "/Downloads"})
        std::filesystem::create_directories(path);
    setenv("HOME", home.c_str(), 1);
    for (const std::string name : {"loginctl-test", "x-terminal-emulator", "xdg-terminal-exec"})
        directory.writeProgram("programs/" + name);
    std::ofstream(surroundings.path("config/user-dirs.dirs")) << "XDG_DOCUMENTS_DIR=\"$HOME/書類\"\n";
    const std::string everywhere = writeEntry("a.desktop", "Exec=true"),
                      elsewhere = writeEntry("b.desktop", "Exec=true\nOnlyShowIn=KDE;");
    Processes withPrograms{{"PATH=" + programs}};
    FreedesktopDesktop here(withPrograms, executor);
    for (const auto& [command, expected] : std::vector<std::pair<std::string, std::string>>{
             {"~", "~"},
             {"${documents}", "~/書類"},
             {"${downloads}", "~/Downloads"}, // by its usual name
             {"${downloads}/missing", ""},
             {"${configuration}", surroundings.path("config")},
             {"${browser}", "test-browser.desktop"},
             {"${files}", "test-files.desktop"},
             {"${terminal}", "xdg-terminal-exec"},
             {"${unknown}", ""},
             {"test-editor.desktop", "test-editor.desktop"},
             {"not-installed.desktop", ""},
             {everywhere, everywhere},
             {elsewhere, ""},
             {"loginctl-test", "loginctl-test"},
             {"no-such-program", ""},
             {"/no/such/path", ""},
             {"", ""},
         })
        EXPECT_EQ(here.builtinCommand(command).value_or(""), expected) << command;
    std::ofstream(surroundings.path("config/user-dirs.dirs")) << "XDG_DOWNLOAD_DIR=\"$HOME/\"\n";
    EXPECT_FALSE(here.builtinCommand("${downloads}")) << "switched off";
    executor.isHolding = true; // as a dead network drive
    EXPECT_TRUE(here.builtinCommand("/no/such/path"));
}

TEST_F(FreedesktopDesktopTest, showsADirectoryInTheFileManagerElseWithItsDefaultApplication) {
    const std::string place = directory.path("a b");
    const std::string opened = "files\t" + place + "\n";
    std::filesystem::create_directories(place);
    EXPECT_FALSE(desktop.showDirectory(directory.path("missing")));
    EXPECT_FALSE(desktop.showDirectory(directory.write("file", "")));
    EXPECT_TRUE(desktop.showDirectory(place));
    EXPECT_EQ(takeRecord(), opened) << "without a bus";

    const TestBus bus;
    EXPECT_TRUE(desktop.showDirectory(place));
    EXPECT_EQ(takeRecord(), opened) << "without a file manager";

    using enum TestService::Manner;
    using namespace std::chrono_literals;
    for (const TestService::Manner manner : {obliging, hanging, refusing}) {
        const TestService fileManager(bus, fileManagerService, manner);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(desktop.showDirectory(place));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s) << "GIO itself would wait 25 s";
        EXPECT_EQ(fileManager.calls(),
                  std::vector<std::string>{"(['file://" + directory.path() + "/a%20b'], '')"});
        EXPECT_EQ(manner == refusing ? takeRecord() : surroundings.read("record"),
                  manner == refusing ? opened : "");
    }
}

} // namespace kavendra
