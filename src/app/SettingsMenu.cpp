#include "app/SettingsMenu.h"

namespace kavendra {

namespace {

MenuEntry toggle(const Setting& setting, const SettingsMenuSource& source) {
    const auto member = std::get<bool LaunchSettings::*>(setting.member);
    return {.title = setting.toggleTitle,
            .isChecked = source.settings.*member,
            .action = [member, effect = setting.effect, change = source.change, reload = source.reload] {
                const bool saved =
                    change([member](LaunchSettings& settings) { settings.*member = !(settings.*member); });
                if (saved && effect == SettingEffect::reload)
                    reload();
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
    Menu menu;
    for (const Setting& setting : allSettings)
        if (setting.toggleTitle)
            menu.push_back(toggle(setting, source));
    const Menu rest{
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
    menu.insert(menu.end(), rest.begin(), rest.end());
    return menu;
}

} // namespace kavendra
