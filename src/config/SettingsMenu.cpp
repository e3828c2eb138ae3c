#include "config/SettingsMenu.h"

namespace kavendra {

namespace {

MenuEntry toggle(
    const char* title, bool LaunchSettings::* field, const SettingsMenuSource& source,
    const std::function<void()>& afterwards = [] {}) {
    return {.title = title,
            .isChecked = source.settings.*field,
            .action = [field, change = source.change, afterwards] {
                if (change([field](LaunchSettings& settings) { settings.*field = !(settings.*field); }))
                    afterwards();
            }};
}

Menu appearanceMenu(const SettingsMenuSource& source) {
    Menu menu;
    for (const LaunchAppearanceMode mode : allAppearanceModes)
        menu.push_back({.title = std::string(storedText(mode)),
                        .isChecked = mode == source.settings.appearanceMode,
                        .action = [mode, change = source.change, apply = source.applyAppearance] {
                            if (change([mode](LaunchSettings& settings) { settings.appearanceMode = mode; }))
                                apply();
                        }});
    return menu;
}

} // namespace

Menu settingsMenu(const SettingsMenuSource& source) {
    return {
        toggle("Select All Text on Focus", &LaunchSettings::selectAllTextOnFocus, source),
        toggle("Show Status Message", &LaunchSettings::showStatusMessage, source),
        toggle("Show Debug Summary", &LaunchSettings::showDebugSummary, source),
        toggle("Show Built-in Items", &LaunchSettings::showBuiltinItems, source, source.reload),
        {.title = "Appearance", .submenu = appearanceMenu(source)},
        {.title = "Open Config/Log Directory", .action = source.openLogDirectory},
        menuSeparator(),
        {.title = "Launch at Login",
         .isChecked = source.isLaunchedAtLogin,
         .action = source.requestStartupChange},
        menuSeparator(),
        {.title = "Open Data Directory", .action = source.openDataDirectory},
        {.title = "Change Data Directory...", .action = source.chooseDataDirectory},
    };
}

} // namespace kavendra
