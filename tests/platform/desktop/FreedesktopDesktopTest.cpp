#include "platform/desktop/FreedesktopDesktop.h"

#include "tests/support/ProcessTable.h"
#include "tests/support/TestBus.h"
#include "tests/support/TestDesktop.h"
#include "tests/support/TestExecutors.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>

namespace kavendra {

namespace {

constexpr TestService::Description fileManagerService{
    .name = "org.freedesktop.FileManager1", .path = "/org/freedesktop/FileManager1", .interface = R"(
<node>
  <interface name='org.freedesktop.FileManager1'>
    <method name='ShowFolders'>
      <arg type='as' name='URIs' direction='in'/>
      <arg type='s' name='StartupId' direction='in'/>
    </method>
  </interface>
</node>)"};

/// Makes the desktop before the first test of the program, because GIO reads its surroundings once.
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
    void SetUp() override { surroundings.forgetRecords(); }

    /// GIO gives an application a file's path even where it could take a URL.
    std::string recordOf(const std::string& application, const std::string& argument) const {
        return application + "\t" + argument + "\n";
    }

    TestDesktop& surroundings = *surroundingsOfAllTests->desktop;
    TemporaryDirectory directory;
    Processes processes{{"PATH=/usr/bin:/bin", "MARK=a = b"}};
    HoldingExecutor executor;
    FreedesktopDesktop desktop{processes, executor};
};

} // namespace

TEST_F(FreedesktopDesktopTest, opensWithTheDefaultApplication) {
    EXPECT_TRUE(desktop.openURL("https://example.org/a%20b?c=d&e#f"));
    EXPECT_EQ(surroundings.waitForRecord(), recordOf("browser", "https://example.org/a%20b?c=d&e#f"));
    surroundings.forgetRecords();
    EXPECT_TRUE(desktop.openFile(directory.write("50% 日本.txt", "text")));
    EXPECT_EQ(surroundings.waitForRecord(), recordOf("editor", directory.path("50% 日本.txt")));

    surroundings.forgetRecords();
    EXPECT_FALSE(desktop.openURL("no-such-scheme://example.org/"));
    EXPECT_FALSE(desktop.openURL(std::string("https://a\0b", 11)));
    EXPECT_FALSE(desktop.openFile(directory.write("picture.png", "\x89PNG\r\n\x1a\n")));
    EXPECT_FALSE(desktop.openFile(directory.path("missing.txt")));
    EXPECT_EQ(surroundings.record(), "");
}

TEST_F(FreedesktopDesktopTest, applicationGetsTheGivenEnvironmentAndItsOwnSession) {
    setenv("ADDED_LATER", "1", 1);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_TRUE(desktop.openURL("http://example.org/"));
    std::signal(SIGXFSZ, handler);
    ASSERT_NE(surroundings.waitForRecord(), "");
    std::vector<std::string> environment = surroundings.environmentOfApplication();
    // GIO tells every program which desktop entry it was started from.
    std::erase_if(environment, [](const std::string& entry) { return entry.starts_with("GIO_LAUNCHED_"); });
    std::ranges::sort(environment);
    EXPECT_EQ(environment, (std::vector<std::string>{"MARK=a = b", "PATH=/usr/bin:/bin"}));
    EXPECT_GT(surroundings.sessionOfApplication(), 0);
    EXPECT_NE(surroundings.sessionOfApplication(), getsid(0));
    EXPECT_TRUE(surroundings.applicationHandlesSignalsByDefault());
    EXPECT_TRUE(eventually([] { return !hasZombieChild(); }));
}

TEST_F(FreedesktopDesktopTest, opensAnAddressWithAnApplication) {
    const std::string url = "https://example.org/";
    for (const std::string& application : {surroundings.applicationPath("test-other-browser.desktop"),
                                           std::string("test-other-browser.desktop")}) {
        surroundings.forgetRecords();
        EXPECT_TRUE(desktop.isApplication(application));
        EXPECT_TRUE(desktop.openURLWithApplication(url, application));
        EXPECT_EQ(surroundings.waitForRecord(), recordOf("other-browser", url));
    }
    surroundings.forgetRecords();
    // Applications that cannot open an address, and paths that are no application.
    std::filesystem::create_directories(directory.path("Mail.App"));
    std::filesystem::create_directories(directory.path("directory.desktop"));
    for (const auto& [path, isApplication] : std::vector<std::pair<std::string, bool>>{
             {directory.path("Mail.App"), true},
             {surroundings.applicationPath("test-takes-no-addresses.desktop"), true},
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
    EXPECT_EQ(surroundings.record(), "");
}

TEST_F(FreedesktopDesktopTest, showsADirectoryInTheFileManagerElseWithItsDefaultApplication) {
    const std::string place = directory.path("a b");
    std::filesystem::create_directories(place);
    const auto record = [&] { return surroundings.waitForRecord(); };
    EXPECT_FALSE(desktop.showDirectory(directory.path("missing")));
    EXPECT_FALSE(desktop.showDirectory(directory.write("file", "")));
    EXPECT_TRUE(desktop.showDirectory(place));
    EXPECT_EQ(record(), recordOf("files", place)) << "without a bus";

    const TestBus bus;
    surroundings.forgetRecords();
    EXPECT_TRUE(desktop.showDirectory(place));
    EXPECT_EQ(record(), recordOf("files", place)) << "without a file manager";

    using enum TestService::Manner;
    using namespace std::chrono_literals;
    for (const TestService::Manner manner : {obliging, hanging, refusing}) {
        surroundings.forgetRecords();
        const TestService fileManager(bus, fileManagerService, manner);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_TRUE(desktop.showDirectory(place));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s) << "GIO itself would wait 25 s";
        EXPECT_EQ(fileManager.calls(),
                  std::vector<std::string>{"(['file://" + directory.path() + "/a%20b'], '')"});
        EXPECT_EQ(manner == refusing ? record() : surroundings.record(),
                  manner == refusing ? recordOf("files", place) : "");
    }
}

TEST_F(FreedesktopDesktopTest, opensATerminalInTheDirectory) {
    const std::string place = directory.path("-a \"b\"\n\xFF");
    const std::string programs = directory.path("programs");
    // The terminal does not end before the test has created the file "go".
    const std::string script = "#!/bin/sh\nwhile [ ! -e '" + directory.path("go") +
                               "' ]; do sleep 0.05; done\n{ echo \"${0##*/}\"; pwd; } > '" +
                               directory.path("record") + "'\n";
    std::filesystem::create_directories(place);
    std::filesystem::create_directories(programs);
    Processes withTerminals{{"PATH=" + programs + ":/usr/bin:/bin"}};
    FreedesktopDesktop terminals(withTerminals, executor);
    for (const std::string name : {"x-terminal-emulator", "xdg-terminal-exec"}) {
        std::filesystem::permissions(directory.write("programs/" + name, script),
                                     std::filesystem::perms::owner_all);
        std::filesystem::remove(directory.path("record"));
        std::filesystem::remove(directory.path("go"));
        const auto terminal = terminals.openTerminal(place);
        ASSERT_TRUE(terminal && terminal->succeeded) << name;
        directory.write("go", "");
        EXPECT_TRUE(eventually([&] { return directory.read("record") == name + "\n" + place + "\n"; }))
            << name;
    }
    const auto opened = terminals.openTerminal(directory.path("missing"));
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.error().description, directory.path("missing") + ": No such file or directory");
}

} // namespace kavendra
