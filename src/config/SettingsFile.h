#pragma once

#include "base/Result.h"
#include "config/LaunchSettings.h"

#include <string>

namespace kavendra {

/// Returns the directory for settings and state: "kavendra" in the application support directory.
std::string configurationDirectoryPath();

std::string settingsFilePath(const std::string& configurationDirectory);

/// Creates the missing ones of: the configuration directory; the settings file with default settings, and
/// with it the sample data file; the state file, with the column widths of an older settings file. Fails with
/// the system's reason at the first step that fails.
Result<void> prepareConfigurationFiles(const std::string& configurationDirectory);

/// Reads the settings file (see decodedSettings). Fails with LaunchError::settingsFileInvalid for every
/// reason.
Result<LaunchSettings> loadSettings(const std::string& configurationDirectory);

/// Replaces the settings file. After a failure, with the system's reason, the old file is unchanged.
Result<void> writeSettings(const std::string& configurationDirectory, const LaunchSettings& settings);

} // namespace kavendra
