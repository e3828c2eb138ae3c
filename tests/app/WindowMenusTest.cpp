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
    WindowMenusTest() { start(); }

    void chooseSetting(const std::string& title) {
        choose(menus.settingsMenu([] {}), title);
    }

    WindowMenus menus{content, desktop, processes, executor};
};

/// Expects the titles in this order, other entries between them.
void expectOrder(const Menu& menu, std::initializer_list<const char*> titles) {
    const std::string text = menuText(menu);
    std::size_t position = 0;
    for (const char* title : titles)
        EXPECT_NE(position = text.find(title, position), std::string::npos) << title << " in " << text;
}

} // namespace

TEST_F(WindowMenusTest, listEntriesInOrder) {
    LaunchItem item;
    item.source = "%1.csv";
    expectOrder(menus.itemMenu(item, std::nullopt),
                {"Open Parent Directory", "Copy to Clipboard [", "Copy Command to Execute", "Copy Cell Value",
                 "Copy Row", "], Open in Excel [", "Read-Only", "New Session", "New Session + Read-Only",
                 "], -, ", "Open Data File (%1.csv)", "-, Reload Data Files", "Open Data Directory"});
    expectOrder(menus.typedPathMenu(),
                {"Open [", "Open File with Associated App", "Open File with VS Code", "-, ",
                 "Open Directory with Finder", "Open Directory with Terminal", "Open Directory with VS Code",
                 "], Open Excel [", "], Copy to Clipboard [", "Copy Directory", "Copy Filename"});
    expectOrder(menus.settingsMenu([] {}),
                {"Select All Text", "Show Status Message", "Show Debug Summary", "Show Built-in Items",
                 "Appearance [System *, Light, Dark", "Open Config/Log Directory", "-, Launch at Login",
                 "-, Open Data Directory", "Change Data Directory..."});
}

TEST_F(WindowMenusTest, settingsMenuChangesSettings) {
    content.setStatus("before");
    chooseSetting("Show Debug Summary");
    EXPECT_EQ(status(), "before") << "does not reload";
    chooseSetting("Show Built-in Items");
    EXPECT_EQ(status(), "Loaded 3 items") << "reloads";
    chooseSetting("Dark");
    EXPECT_EQ(state().appSettings.appearanceMode, LaunchAppearanceMode::dark);
    EXPECT_EQ(desktop.appearances.back(), Appearance::dark);
    EXPECT_THAT(menuText(menus.settingsMenu([] {})), testing::HasSubstr("System, Light, Dark *"));
    chooseSetting("Open Config/Log Directory");
    EXPECT_EQ(status(), "Opened log directory");
    chooseSetting("Open Data Directory");
    EXPECT_EQ(status(), "Opened config directory");
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory " + configuration.path("log"),
                                           "showDirectory " + configuration.path("data")));
    chooseSetting("Launch at Login");
    content.confirmStartupChange();
    EXPECT_EQ(state().pendingStartupRegistrationAction, std::nullopt);
    EXPECT_THAT(menuText(menus.settingsMenu([] {})), testing::HasSubstr("Launch at Login *, "));
    bool isAsked = false;
    choose(menus.settingsMenu([&isAsked] { isAsked = true; }), "Change Data Directory...");
    EXPECT_TRUE(isAsked);
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

TEST_F(WindowMenusTest, settingThatCannotBeWrittenHasNoEffect) {
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
    EXPECT_EQ(status(), "before") << "unchanged directory";
    menus.changeDataDirectory(configuration.path("kavendra-state.json/x"));
    EXPECT_THAT(dialogText(), EndsWith("/x: Not a directory"));
    EXPECT_EQ(state().items->list.size(), 3U);
    const std::string other = configuration.path("other/deep");
    menus.changeDataDirectory(other);
    EXPECT_EQ(status(), "No launch items found in " + other);
    EXPECT_THAT(configuration.read("kavendra-settings.json"), testing::HasSubstr("other/deep"));
    configuration.write("other/deep/items.csv", header + std::string("delta,,,\n"));
    choose(menus.generalMenu(), "Reload Data Files");
    EXPECT_EQ(selectedTitle(), "delta");
}

} // namespace kavendra
