#include "config/SettingsFile.h"

#include "config/JSONFile.h"
#include "config/StateFile.h"
#include "data/LaunchError.h"
#include "data/SampleDataFile.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace kavendra {

using nlohmann::json;

namespace {

/// The member of that name; nothing when it is missing or null.
const json* present(const json& object, const char* key) {
    const auto member = object.find(key);
    return member == object.end() || member->is_null() ? nullptr : &*member;
}

// Each of these takes a member over into `value` and returns whether the member is of the right kind.

bool readText(const json* member, std::string& value) {
    if (!member || !member->is_string())
        return false;
    value = member->get<std::string>();
    return true;
}

bool readOptionalBoolean(const json* member, bool& value) {
    if (!member)
        return true;
    if (!member->is_boolean())
        return false;
    value = member->get<bool>();
    return true;
}

template <typename Enumeration, std::size_t count>
bool readStoredText(const json* member, const std::array<Enumeration, count>& all, Enumeration& value) {
    std::string text;
    if (!readText(member, text))
        return false;
    const auto found = std::ranges::find_if(all, [&](Enumeration each) { return storedText(each) == text; });
    if (found == all.end())
        return false;
    value = *found;
    return true;
}

bool readAction(const json& object, SearchPathAction& action) {
    constexpr std::array targetTypes{SearchPathActionTargetType::directory, SearchPathActionTargetType::file};
    return object.is_object() && readText(present(object, "appName"), action.appName) &&
           readText(present(object, "binaryPath"), action.binaryPath) &&
           readStoredText(present(object, "targetType"), targetTypes, action.targetType);
}

bool readOptionalActions(const json* member, std::vector<SearchPathAction>& actions) {
    if (!member)
        return true;
    if (!member->is_array())
        return false;
    actions.clear();
    actions.resize(member->size()); // each with an identity of its own
    return std::ranges::equal(*member, actions, readAction);
}

bool readOptionalAppearance(const json* member, LaunchAppearanceMode& mode) {
    return !member || readStoredText(member, allAppearanceModes, mode);
}

bool readSettings(const json& object, LaunchSettings& settings) {
    return readText(present(object, "dataDirectoryPath"), settings.dataDirectoryPath) &&
           readText(present(object, "logDirectoryPath"), settings.logDirectoryPath) &&
           readOptionalBoolean(present(object, "showStatusMessage"), settings.showStatusMessage) &&
           readOptionalBoolean(present(object, "showDebugSummary"), settings.showDebugSummary) &&
           readOptionalBoolean(present(object, "showBuiltinItems"), settings.showBuiltinItems) &&
           readOptionalBoolean(present(object, "selectAllTextOnFocus"), settings.selectAllTextOnFocus) &&
           readOptionalAppearance(present(object, "appearanceMode"), settings.appearanceMode) &&
           readOptionalActions(present(object, "searchPathActions"), settings.searchPathActions);
}

json settingsObject(const LaunchSettings& settings) {
    json actions = json::array();
    for (const SearchPathAction& action : settings.searchPathActions)
        actions.push_back({{"appName", action.appName},
                           {"binaryPath", action.binaryPath},
                           {"targetType", storedText(action.targetType)}});
    return {
        {"dataDirectoryPath", settings.dataDirectoryPath},
        {"logDirectoryPath", settings.logDirectoryPath},
        {"showStatusMessage", settings.showStatusMessage},
        {"showDebugSummary", settings.showDebugSummary},
        {"showBuiltinItems", settings.showBuiltinItems},
        {"selectAllTextOnFocus", settings.selectAllTextOnFocus},
        {"appearanceMode", storedText(settings.appearanceMode)},
        {"searchPathActions", std::move(actions)},
    };
}

} // namespace

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
    const auto object = readJSONObject(path);
    LaunchSettings settings;
    if (!object || !readSettings(*object, settings))
        return std::unexpected(LaunchError{LaunchError::settingsFileInvalid, path});
    return settings;
}

Result<void> writeSettings(const std::string& configurationDirectory, const LaunchSettings& settings) {
    return writeJSONObject(settingsFilePath(configurationDirectory), settingsObject(settings));
}

} // namespace kavendra
