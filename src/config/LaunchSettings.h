#pragma once

#include "platform/Desktop.h"
#include "platform/UUID.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The appearance that the person chose, in the order in which the choices are offered.
enum class LaunchAppearanceMode { system, light, dark };
inline constexpr std::array allAppearanceModes{LaunchAppearanceMode::system, LaunchAppearanceMode::light,
                                               LaunchAppearanceMode::dark};

/// Returns the text that stands for the mode in the settings file and in the menu.
std::string_view storedText(LaunchAppearanceMode mode);

Appearance appearance(LaunchAppearanceMode mode);

enum class SearchPathActionTargetType { directory, file };

std::string_view storedText(SearchPathActionTargetType type);

/// A program that is offered to open the path in the search field with.
struct SearchPathAction {
    UUID id = UUID::random(); ///< identity within one run; not stored
    std::string appName;      ///< as shown in the menu
    std::string binaryPath;   ///< a program name or a path
    SearchPathActionTargetType targetType = SearchPathActionTargetType::directory;

    bool operator==(const SearchPathAction&) const = default;
};

/// All that a person can configure; the field names are the keys of the settings file.
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

} // namespace kavendra
