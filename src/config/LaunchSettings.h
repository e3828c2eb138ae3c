#pragma once

#include "base/TranslatableText.h"
#include "base/UUID.h"
#include "platform/Desktop.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kavendra {

/// The appearance chosen in the settings menu, in menu order.
enum class LaunchAppearanceMode { system, light, dark };
inline constexpr std::array allAppearanceModes{LaunchAppearanceMode::system, LaunchAppearanceMode::light,
                                               LaunchAppearanceMode::dark};

/// Returns the text of the mode in the settings file and in the menu.
std::string_view storedText(LaunchAppearanceMode mode);

Appearance appearance(LaunchAppearanceMode mode);

enum class SearchPathActionTargetType { directory, file };
inline constexpr std::array allTargetTypes{SearchPathActionTargetType::directory,
                                           SearchPathActionTargetType::file};

/// Returns the text of the type in the settings file.
std::string_view storedText(SearchPathActionTargetType type);

/// A configured program that opens the typed path.
struct SearchPathAction {
    UUID id = UUID::random(); ///< identity within one run; not stored
    std::string appName;      ///< as shown in the menu
    std::string binaryPath;   ///< a program name or a path
    SearchPathActionTargetType targetType = SearchPathActionTargetType::directory;

    bool operator==(const SearchPathAction&) const = default;
};

/// The settings. The member initializers are the defaults of optional keys.
struct LaunchSettings {
    std::string dataDirectoryPath;
    std::string logDirectoryPath;
    bool showStatusMessage = true;
    bool showDebugSummary = false;
    bool showBuiltinItems = true;
    bool selectAllTextOnFocus = false;
    LaunchAppearanceMode appearanceMode = LaunchAppearanceMode::system;
    std::vector<SearchPathAction> searchPathActions = defaultSearchPathActions();

    static std::vector<SearchPathAction> defaultSearchPathActions();
    bool operator==(const LaunchSettings&) const = default;
};

/// Returns the settings of a first run: both directories are the configuration directory.
LaunchSettings defaultSettings(const std::string& configurationDirectory);

/// What to do after a changed setting was saved.
enum class SettingEffect { none, reload };

/// Properties of a setting.
struct Setting {
    using Member =
        std::variant<std::string LaunchSettings::*, bool LaunchSettings::*,
                     LaunchAppearanceMode LaunchSettings::*, std::vector<SearchPathAction> LaunchSettings::*>;

    const char* key; ///< in the settings file
    Member member;
    bool isRequired = false;           ///< a settings file without the key is invalid
    const char* toggleTitle = nullptr; ///< menu title of a boolean setting; null when the menu has no toggle
    SettingEffect effect = SettingEffect::none; ///< of the toggle
};

/// All settings. This table defines the keys of the settings file and, in this order, the toggles of the
/// settings menu.
inline constexpr std::array allSettings{
    Setting{.key = "dataDirectoryPath", .member = &LaunchSettings::dataDirectoryPath, .isRequired = true},
    Setting{.key = "logDirectoryPath", .member = &LaunchSettings::logDirectoryPath, .isRequired = true},
    Setting{.key = "selectAllTextOnFocus",
            .member = &LaunchSettings::selectAllTextOnFocus,
            .toggleTitle = KAVENDRA_TEXT("Select All Text on Focus")},
    Setting{.key = "showStatusMessage",
            .member = &LaunchSettings::showStatusMessage,
            .toggleTitle = KAVENDRA_TEXT("Show Status Message")},
    Setting{.key = "showDebugSummary",
            .member = &LaunchSettings::showDebugSummary,
            .toggleTitle = KAVENDRA_TEXT("Show Debug Summary")},
    Setting{.key = "showBuiltinItems",
            .member = &LaunchSettings::showBuiltinItems,
            .toggleTitle = KAVENDRA_TEXT("Show Built-in Items"),
            .effect = SettingEffect::reload},
    Setting{.key = "appearanceMode", .member = &LaunchSettings::appearanceMode},
    Setting{.key = "searchPathActions", .member = &LaunchSettings::searchPathActions},
};

} // namespace kavendra
