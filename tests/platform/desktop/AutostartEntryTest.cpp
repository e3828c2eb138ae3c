#include "platform/desktop/AutostartEntry.h"

#include "platform/Files.h"
#include "platform/desktop/FreedesktopDesktop.h"
#include "platform/desktop/GLibHandles.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/ProcessTable.h"
#include "tests/support/TestExecutors.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

namespace kavendra {

namespace {

using enum StartupRegistrationStatus;

bool passesValidation(const std::string& path) {
    return std::system(("desktop-file-validate '" + path + "'").c_str()) == 0;
}

/// Starts the program of an entry, as a desktop does at login.
bool startProgramOf(const std::string& entryPath) {
    const GObjectHandle<GDesktopAppInfo> application(g_desktop_app_info_new_from_filename(entryPath.c_str()));
    return application && g_app_info_launch(G_APP_INFO(application.get()), nullptr, nullptr, nullptr);
}

class AutostartEntry : public testing::Test {
protected:
    /// Call it only in tests without GIO's applications, because GIO reads the variable once.
    void useConfigurationHome() const { setenv("XDG_CONFIG_HOME", directory.path().c_str(), 1); }

    TemporaryDirectory directory;
    Processes processes{{}};
    HoldingExecutor executor;
    FreedesktopDesktop desktop{processes, executor};
    const std::string entry = "autostart/" KAVENDRA_APPLICATION_ID ".desktop";
    const std::string start = "[Desktop Entry]\nType=Application\nName=kavendra\nExec=kavendra\n";
};

} // namespace

TEST_F(AutostartEntry, isValidAndStartsTheProgramForEveryPath) {
    for (const char* name : {"plain", "a b", "quo\"te", "apo'strophe", "back\\slash", "dollar$HOME",
                             "tick`id`", "per%cent %f %%", "semi;colon & <angles>", "equal=sign",
                             "all \"$=%`\\", " leading", "日本", "#hash*?(~|)", "\\n\\s\\\\"}) {
        std::filesystem::remove(directory.path("started"));
        const auto content =
            autostartEntry(directory.writeProgram(name, "#!/bin/sh\n: > \"${0%/*}/started\"\n"));
        ASSERT_TRUE(content) << name;
        SCOPED_TRACE(*content);
        const std::string path = directory.write("kavendra.desktop", *content);
        EXPECT_TRUE(passesValidation(path));
        EXPECT_TRUE(startProgramOf(path));
        EXPECT_TRUE(eventually([&] { return exists(directory.path("started")); }));
    }
    EXPECT_FALSE(autostartEntry("/a\tb/kavendra")) << "a control character";
    EXPECT_FALSE(autostartEntry("/\xff/kavendra")) << "not UTF-8";
}

TEST_F(AutostartEntry, statusFollowsTheKeysOfTheEntry) {
    struct Case {
        const char* name;
        std::string content;
        StartupRegistrationStatus expected;
    };
    for (const auto& [name, content, expected] : {
             Case{"as installed by hand", start, enabled},
             Case{"switched on", start + "Hidden=false\nX-GNOME-Autostart-enabled=true\n", enabled},
             Case{"hidden", start + "Hidden=true\n", requiresApproval},
             Case{"hidden and nothing else", "[Desktop Entry]\nHidden=true\n", requiresApproval},
             Case{"switched off", start + "X-GNOME-Autostart-enabled=false\n", requiresApproval},
             Case{"switched off elsewhere", start + "X-MATE-Autostart-enabled=false\n", requiresApproval},
             Case{"switch of an action", start + "[Desktop Action a]\nHidden=true\n", enabled},
             Case{"no boolean", start + "Hidden=perhaps\n", enabled},
             Case{"no entry", "[Something]\nHidden=true\n", notRegistered},
             Case{"no key file", "\xff\0[", notRegistered},
             Case{"empty", "", notRegistered},
         })
        EXPECT_EQ(autostartStatus(directory.write("kavendra.desktop", content), "/bin/sh"), expected) << name;
    EXPECT_EQ(autostartStatus(directory.path("missing"), "/bin/sh"), notRegistered);
    EXPECT_EQ(autostartStatus(directory.path(), "/bin/sh"), notRegistered);
    for (const std::string& executable : {std::string(), directory.path("missing"), directory.path()})
        EXPECT_EQ(autostartStatus(directory.write("kavendra.desktop", start), executable), notFound);
}

TEST_F(AutostartEntry, isWrittenEnabledAndRemovedByTheDesktop) {
    useConfigurationHome();
    EXPECT_EQ(desktop.launchAtLoginStatus(), notRegistered);
    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_TRUE(desktop.enableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), enabled);

    directory.write(entry, directory.read(entry) + "Hidden=true\n");
    EXPECT_EQ(desktop.launchAtLoginStatus(), requiresApproval);
    EXPECT_TRUE(desktop.enableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), enabled);
    EXPECT_TRUE(passesValidation(directory.path(entry)));

    EXPECT_TRUE(desktop.disableLaunchAtLogin());
    EXPECT_EQ(desktop.launchAtLoginStatus(), notRegistered);
    std::filesystem::remove(directory.path("autostart"));
    directory.write("autostart", "a file");
    EXPECT_EQ(desktop.enableLaunchAtLogin().error().description,
              directory.path("autostart") + ": Not a directory");
    EXPECT_FALSE(desktop.disableLaunchAtLogin());
}

TEST_F(AutostartEntry, replacesAnEntryUnderAnOldName) {
    useConfigurationHome();
    struct Case {
        const char* name;
        const char* oldKeys;
        const char* newEntry; ///< content under the new name, null for none
        StartupRegistrationStatus expected;
    };
    for (const auto& [name, oldKeys, newEntry, expected] : {
             Case{"switched on", "", nullptr, enabled},
             Case{"switched off", "Hidden=true\n", nullptr, requiresApproval},
             Case{"beside a new one", "", "[Desktop Entry]\nHidden=true\n", requiresApproval},
         }) {
        std::filesystem::remove(directory.path(entry));
        const std::string oldEntry =
            directory.write("autostart/kavendra.desktop", start + "Icon=kavendra\n" + oldKeys);
        if (newEntry)
            directory.write(entry, newEntry);
        EXPECT_EQ(desktop.launchAtLoginStatus(), expected) << name;
        EXPECT_FALSE(exists(oldEntry)) << name;
        const std::string content = directory.read(entry);
        EXPECT_EQ(content.contains("Icon=" KAVENDRA_APPLICATION_ID), newEntry == nullptr) << content;
    }
}

} // namespace kavendra
