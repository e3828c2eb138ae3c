#pragma once

#include "base/Result.h"
#include "config/LaunchSettings.h"

#include <string>

namespace kavendra {

/// Returns the one directory that holds kavendra's own files, below the application support directory.
std::string configurationDirectoryPath();

std::string settingsFilePath(const std::string& configurationDirectory);

/// Creates what is missing in the configuration directory: the directory itself, the settings file with the
/// default settings (and then, on that run only, the sample data file), and the state file, which takes the
/// column widths over from a settings file of the older layout.
/// Fails with the system's reason of the first step that fails.
Result<void> prepareConfigurationFiles(const std::string& configurationDirectory);

/// Reads the settings file. Optional keys that are missing or null take their defaults, unknown keys are
/// ignored. Fails with LaunchError::settingsFileInvalid, whatever the reason.
Result<LaunchSettings> loadSettings(const std::string& configurationDirectory);

/// Writes the whole settings file. Fails with the system's reason, the old file whole.
Result<void> writeSettings(const std::string& configurationDirectory, const LaunchSettings& settings);

} // namespace kavendra
