#include "ui/WindowMenus.h"

#include "tests/support/MenuText.h"
#include "tests/ui/ContentViewFixture.h"

#include <gmock/gmock.h>

namespace kavendra {

namespace {

using testing::ElementsAre;
using testing::EndsWith;

class WindowMenusTest : public ContentViewFixture {
protected:
    WindowMenusTest() { content.appear(); }

    WindowMenus menus{content, desktop, processes};
};

} // namespace

TEST_F(WindowMenusTest, thereIsASearchPathExactlyWhileTheTextNamesSomething) {
    EXPECT_FALSE(menus.hasSearchPath());
    content.setSearchText("\"" + configuration.path("data") + "\"");
    EXPECT_TRUE(menus.hasSearchPath());
    choose(menus.searchPathMenu(), "Copy Filename");
    EXPECT_THAT(desktop.calls, ElementsAre("copyText data"));
    EXPECT_EQ(state().lastActionMessage, "Copied filename");
    content.setSearchText(configuration.path("data.") + "x");
    EXPECT_FALSE(menus.hasSearchPath());
}

TEST_F(WindowMenusTest, aRowsActionReportsAStatusOrAFailure) {
    const LaunchItem gamma = content.filteredItems()[2]; // its command is "/"
    const std::string logBefore = log();
    choose(menus.itemMenu(gamma, "Title"), "Copy Cell Value");
    EXPECT_EQ(state().lastActionMessage, "Copied Cell Value");
    choose(menus.itemMenu(gamma, "Title"), "Open Data File (items.csv)");
    EXPECT_THAT(desktop.calls,
                ElementsAre("copyText gamma", "openFile " + configuration.path("data/items.csv")));
    choose(menus.itemMenu(LaunchItem{}, "Title"), "Copy Cell Value");
    EXPECT_EQ(state().lastActionMessage, "Nothing to copy");
    EXPECT_FALSE(state().errorDialogMessage);
    EXPECT_EQ(log(), logBefore) << "neither successes nor what had no target are logged";

    desktop.accepts = false;
    choose(menus.itemMenu(gamma, "Title"), "Open Parent Directory");
    EXPECT_EQ(state().errorDialogMessage, "Failed to open in Finder: /");
    EXPECT_THAT(log(), EndsWith("] Failed to open in Finder: /\n"));
}

TEST_F(WindowMenusTest, theGeneralMenuReloadsAndOpensTheDataDirectory) {
    writeItems("delta,,,\n");
    choose(menus.generalMenu(), "Reload Data Files");
    EXPECT_EQ(selectedTitle(), "delta");
    choose(menus.generalMenu(), "Open Data Directory");
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory " + configuration.path("data")));
    EXPECT_EQ(state().lastActionMessage, "Opened config directory");
    desktop.accepts = false;
    choose(menus.generalMenu(), "Open Data Directory");
    EXPECT_EQ(state().errorDialogMessage, "Failed to open in Finder: " + configuration.path("data"));
}

TEST_F(WindowMenusTest, theSettingsMenuChangesWhatItSays) {
    const auto menu = [this] { return menus.settingsMenu([] {}); };
    choose(menu(), "Show Debug Summary");
    EXPECT_TRUE(state().appSettings.showDebugSummary);
    choose(menu(), "Show Built-in Items");
    EXPECT_EQ(state().lastActionMessage, "Loaded 3 items");
    choose(menu(), "Dark");
    EXPECT_EQ(desktop.appearances.back(), Appearance::dark);
    choose(menu(), "Open Config/Log Directory");
    EXPECT_EQ(state().lastActionMessage, "Opened log directory");
    choose(menu(), "Open Data Directory");
    EXPECT_EQ(state().lastActionMessage, "Opened config directory");
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory " + configuration.path("log"),
                                           "showDirectory " + configuration.path("data")));
    choose(menu(), "Launch at Login");
    EXPECT_EQ(state().pendingStartupRegistrationAction, StartupRegistrationAction::registerApp);
}

TEST_F(WindowMenusTest, anotherDataDirectoryIsCreatedSavedAndLoaded) {
    content.setStatus("before");
    menus.changeDataDirectory(configuration.path("data"));
    EXPECT_EQ(state().lastActionMessage, "before") << "the one that is in use";
    menus.changeDataDirectory(configuration.path("kavendra-state.json/x"));
    EXPECT_THAT(*state().errorDialogMessage, EndsWith("/x: Not a directory"));
    EXPECT_EQ(state().items->list.size(), 3U);
    const std::string other = configuration.path("other/deep");
    menus.changeDataDirectory(other);
    EXPECT_EQ(state().lastActionMessage, "No launch items found in " + other);
    EXPECT_THAT(configuration.read("kavendra-settings.json"), testing::HasSubstr("other/deep"));
}

} // namespace kavendra
