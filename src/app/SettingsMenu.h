#pragma once

#include "app/Menu.h"
#include "config/LaunchSettings.h"

#include <functional>

namespace kavendra {

/// Changes one field of the settings it is given.
using SettingsEdit = std::function<void(LaunchSettings&)>;

/// What the settings menu is made of.
struct SettingsMenuSource {
    LaunchSettings settings; ///< as they stand when the menu is opened
    bool isLaunchedAtLogin = false;

    /// Saves and adopts the settings with that edit. Returns whether they could be written.
    std::function<bool(const SettingsEdit&)> change;
    std::function<void()> reload;
    std::function<void()> applyAppearance;
    std::function<void()> openLogDirectory;
    std::function<void()> requestStartupChange;
    std::function<void()> openDataDirectory;
    std::function<void()> chooseDataDirectory;
};

/// Returns the menu behind the gear button. What follows a change happens only when it could be written.
Menu settingsMenu(const SettingsMenuSource& source);

} // namespace kavendra
