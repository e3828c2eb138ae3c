#include "config/LaunchSettings.h"

namespace kavendra {

std::string_view storedText(LaunchAppearanceMode mode) {
    constexpr std::array<std::string_view, 3> texts{"System", "Light", "Dark"};
    return texts[static_cast<std::size_t>(mode)];
}

Appearance appearance(LaunchAppearanceMode mode) {
    constexpr std::array appearances{Appearance::system, Appearance::light, Appearance::dark};
    return appearances[static_cast<std::size_t>(mode)];
}

std::string_view storedText(SearchPathActionTargetType type) {
    return type == SearchPathActionTargetType::directory ? "Directory" : "File";
}

std::vector<SearchPathAction> LaunchSettings::defaultSearchPathActions() {
    return {
        {.appName = "VS Code", .binaryPath = "code", .targetType = SearchPathActionTargetType::directory},
        {.appName = "VS Code", .binaryPath = "code", .targetType = SearchPathActionTargetType::file},
    };
}

LaunchSettings defaultSettings(const std::string& configurationDirectory) {
    LaunchSettings settings;
    settings.dataDirectoryPath = configurationDirectory;
    settings.logDirectoryPath = configurationDirectory;
    return settings;
}

} // namespace kavendra
