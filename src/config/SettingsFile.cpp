#include "config/SettingsFile.h"

#include "config/ConfigErrors.h"
#include "config/JSONEncoding.h"
#include "config/StateFile.h"
#include "data/DataDirectory.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <cerrno>

namespace kavendra {

std::string configurationDirectoryPath() {
    return joinedPath(applicationSupportDirectory(), "kavendra");
}

std::string settingsFilePath(const std::string& configurationDirectory) {
    return joinedPath(configurationDirectory, "kavendra-settings.json");
}

Result<void> prepareConfigurationFiles(const std::string& configurationDirectory) {
    if (auto created = createDirectories(configurationDirectory); !created)
        return created;
    const std::string settingsPath = settingsFilePath(configurationDirectory);
    if (!exists(settingsPath)) {
        if (auto written = writeSettings(configurationDirectory, defaultSettings(configurationDirectory));
            !written)
            return written;
        if (auto written = writeSampleDataFile(configurationDirectory); !written)
            return written;
    }
    if (exists(stateFilePath(configurationDirectory)))
        return {};
    const auto settings = readFile(settingsPath, maximumJSONFileSize);
    if (!settings)
        return std::unexpected(settings.error());
    return writeState(configurationDirectory, stateOfOlderSettings(settings->view()));
}

Result<LaunchSettings> loadSettings(const std::string& configurationDirectory) {
    const std::string path = settingsFilePath(configurationDirectory);
    const auto bytes = readFile(path, maximumJSONFileSize);
    auto settings = bytes ? decodedSettings(bytes->view()) : std::nullopt;
    if (!settings)
        return LaunchError::settingsFileInvalid(path);
    return std::move(*settings);
}

Result<void> writeSettings(const std::string& configurationDirectory, const LaunchSettings& settings) {
    const std::string path = settingsFilePath(configurationDirectory);
    const auto text = encoded(settings);
    return text ? replaceFile(path, *text) : systemFailure(path, EILSEQ);
}

} // namespace kavendra
