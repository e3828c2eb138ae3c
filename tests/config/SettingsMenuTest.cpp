#include "config/SettingsMenu.h"

#include <gtest/gtest.h>

namespace kavendra {

namespace {

/// A menu whose actions append to `events`; a change is refused while `canSave` is not set.
class SettingsMenuTest : public testing::Test {
protected:
    Menu menu() {
        const auto event = [this](const char* name) {
            return [this, name] { events += std::string(name) + " "; };
        };
        return settingsMenu({.settings = settings,
                             .isLaunchedAtLogin = false,
                             .change =
                                 [this](const SettingsEdit& edit) {
                                     if (canSave)
                                         edit(settings);
                                     events += canSave ? "saved " : "refused ";
                                     return canSave;
                                 },
                             .reload = event("reload"),
                             .applyAppearance = event("appearance"),
                             .openLogDirectory = event("log"),
                             .requestStartupChange = event("startup"),
                             .openDataDirectory = event("data"),
                             .chooseDataDirectory = event("choose")});
    }

    static std::string described(const Menu& menu) {
        std::string text;
        for (const MenuEntry& entry : menu)
            text += (entry.isSeparator() ? "-" : entry.title) +
                    (entry.isChecked.value_or(false) ? " *" : "") + "\n";
        return text;
    }

    std::string choose(std::size_t entry) {
        events.clear();
        menu().at(entry).action();
        return events;
    }

    LaunchSettings settings = defaultSettings("/c");
    bool canSave = true;
    std::string events;
};

} // namespace

TEST_F(SettingsMenuTest, listsItsEntriesWithTheirMarks) {
    EXPECT_EQ(described(menu()),
              "Select All Text on Focus\nShow Status Message *\nShow Debug Summary\n"
              "Show Built-in Items *\nAppearance\nOpen Config/Log Directory\n-\nLaunch at Login\n-\n"
              "Open Data Directory\nChange Data Directory...\n");
    EXPECT_EQ(described(menu()[4].submenu), "System *\nLight\nDark\n");
}

TEST_F(SettingsMenuTest, whatFollowsAChangeNeedsItToBeWritten) {
    EXPECT_EQ(choose(0), "saved ");
    EXPECT_TRUE(settings.selectAllTextOnFocus);
    EXPECT_EQ(choose(1) + choose(2), "saved saved ");
    EXPECT_FALSE(settings.showStatusMessage);
    EXPECT_TRUE(settings.showDebugSummary);
    EXPECT_EQ(choose(3), "saved reload ");
    menu()[4].submenu[2].action();
    EXPECT_EQ(events, "saved reload saved appearance ");
    EXPECT_EQ(settings.appearanceMode, LaunchAppearanceMode::dark);
    canSave = false;
    EXPECT_EQ(choose(3), "refused ");
    EXPECT_EQ(described(menu()).find("Show Built-in Items *"), std::string::npos);
}

} // namespace kavendra
