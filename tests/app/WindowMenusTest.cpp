#include "app/WindowMenus.h"

#include "tests/app/ContentViewFixture.h"
#include "tests/support/Limits.h"
#include "tests/support/MenuText.h"

#include <gmock/gmock.h>

#include <map>

namespace kavendra {

namespace {

using testing::ElementsAre;
using testing::EndsWith;

class WindowMenusTest : public ContentViewFixture {
protected:
    WindowMenusTest() { content.appear(); }

    void chooseSetting(const std::string& title) {
        choose(menus.settingsMenu([] {}), title);
    }

    WindowMenus menus{content, desktop, processes};
};

} // namespace

TEST_F(WindowMenusTest, aRowsActionReportsAStatusOrAFailure) {
    const LaunchItem gamma = content.filteredItems()[2]; // its command is "/"
    const std::string logBefore = log();
    choose(menus.itemMenu(gamma, ItemColumn::title), "Open Data File (items.csv)");
    EXPECT_EQ(status(), "Opened source file");
    EXPECT_THAT(desktop.calls, ElementsAre("openFile " + configuration.path("data/items.csv")));
    choose(menus.itemMenu(LaunchItem{}, ItemColumn::title), "Copy Cell Value");
    EXPECT_EQ(status(), "Nothing to copy");
    EXPECT_EQ(dialogText(), "no dialog");
    EXPECT_EQ(log(), logBefore) << "neither successes nor what had no target are logged";

    desktop.accepts = false;
    choose(menus.itemMenu(gamma, ItemColumn::title), "Open Parent Directory");
    EXPECT_EQ(dialogText(), "Failed to open in Finder: /");
    EXPECT_THAT(log(), EndsWith("] Failed to open in Finder: /\n"));
}

TEST_F(WindowMenusTest, theGeneralMenuReloadsAndOpensTheDataDirectory) {
    writeItems("delta,,,\n");
    choose(menus.generalMenu(), "Reload Data Files");
    EXPECT_EQ(selectedTitle(), "delta");
    desktop.accepts = false;
    choose(menus.generalMenu(), "Open Data Directory");
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory " + configuration.path("data")));
    EXPECT_EQ(dialogText(), "Failed to open in Finder: " + configuration.path("data"));
}

TEST_F(WindowMenusTest, theSettingsMenuChangesWhatItSays) {
    chooseSetting("Select All Text on Focus");
    chooseSetting("Show Status Message");
    EXPECT_TRUE(state().appSettings.selectAllTextOnFocus);
    EXPECT_FALSE(state().appSettings.showStatusMessage);
    EXPECT_EQ(menuText(menus.settingsMenu([] {})),
              "Select All Text on Focus *, Show Status Message, Show Debug Summary, Show Built-in Items *, "
              "Appearance [System *, Light, Dark], Open Config/Log Directory, -, Launch at Login, -, "
              "Open Data Directory, Change Data Directory...");
    chooseSetting("Show Debug Summary");
    EXPECT_TRUE(state().appSettings.showDebugSummary);
    content.setStatus("before");
    chooseSetting("Show Built-in Items");
    EXPECT_FALSE(state().appSettings.showBuiltinItems);
    EXPECT_EQ(status(), "Loaded 3 items");
    chooseSetting("Dark");
    EXPECT_EQ(state().appSettings.appearanceMode, LaunchAppearanceMode::dark);
    EXPECT_EQ(desktop.appearances.back(), Appearance::dark);
    chooseSetting("Open Config/Log Directory");
    EXPECT_EQ(status(), "Opened log directory");
    chooseSetting("Open Data Directory");
    EXPECT_EQ(status(), "Opened config directory");
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory " + configuration.path("log"),
                                           "showDirectory " + configuration.path("data")));
    chooseSetting("Launch at Login");
    content.confirmStartupChange();
    EXPECT_THAT(menuText(menus.settingsMenu([] {})), testing::HasSubstr("Launch at Login *, "));
}

TEST_F(WindowMenusTest, everyToggleIsStored) {
    const auto toggles = [this] {
        std::map<std::string, bool> found;
        for (const MenuEntry& entry : menus.settingsMenu([] {}))
            if (entry.isChecked && entry.title != "Launch at Login")
                found[entry.title] = *entry.isChecked;
        return found;
    };
    const auto before = toggles();
    EXPECT_GE(before.size(), 4U);
    for (const auto& [title, wasChecked] : before) {
        chooseSetting(title);
        content.reloadData(); // reads the settings file
        EXPECT_NE(toggles().at(title), wasChecked) << title;
    }
}

TEST_F(WindowMenusTest, nothingFollowsASettingThatCannotBeWritten) {
    const std::string written = configuration.read("kavendra-settings.json");
    const std::size_t appearances = desktop.appearances.size();
    const ScopedFileSizeLimit limit(8);
    for (const char* title : {"Show Built-in Items", "Dark"}) {
        chooseSetting(title);
        EXPECT_THAT(dialogText(), EndsWith("kavendra-settings.json: File too large"));
        EXPECT_THAT(status(), EndsWith("File too large | Log write failed")) << "no reload";
        content.dismissErrorDialog();
    }
    EXPECT_TRUE(state().appSettings.showBuiltinItems);
    EXPECT_EQ(state().appSettings.appearanceMode, LaunchAppearanceMode::system);
    EXPECT_EQ(desktop.appearances.size(), appearances);
    EXPECT_EQ(configuration.read("kavendra-settings.json"), written);
}

TEST_F(WindowMenusTest, anotherDataDirectoryIsCreatedSavedAndLoaded) {
    content.setStatus("before");
    menus.changeDataDirectory(configuration.path("data"));
    EXPECT_EQ(status(), "before") << "the one that is in use";
    menus.changeDataDirectory(configuration.path("kavendra-state.json/x"));
    EXPECT_THAT(dialogText(), EndsWith("/x: Not a directory"));
    EXPECT_EQ(state().items->list.size(), 3U);
    const std::string other = configuration.path("other/deep");
    menus.changeDataDirectory(other);
    EXPECT_EQ(status(), "No launch items found in " + other);
    EXPECT_THAT(configuration.read("kavendra-settings.json"), testing::HasSubstr("other/deep"));
}

} // namespace kavendra
