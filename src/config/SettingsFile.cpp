#include "config/SettingsFile.h"

#include "config/ConfigErrors.h"
#include "config/JSONFile.h"
#include "config/StateFile.h"
#include "data/SampleDataFile.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace kavendra {

using nlohmann::json;

namespace {

/// Returns the member, or null when it is missing or JSON null.
const json* present(const json& object, const char* key) {
    const auto member = object.find(key);
    return member == object.end() || member->is_null() ? nullptr : &*member;
}

// Each read() stores a JSON value in `value` and returns whether it has the right type.

bool read(const json& stored, std::string& value) {
    if (!stored.is_string())
        return false;
    value = stored.get<std::string>();
    return true;
}

bool read(const json& stored, bool& value) {
    if (!stored.is_boolean())
        return false;
    value = stored.get<bool>();
    return true;
}

template <typename Enumeration, std::size_t count>
bool readStoredText(const json& stored, const std::array<Enumeration, count>& all, Enumeration& value) {
    std::string text;
    if (!read(stored, text))
        return false;
    const auto found = std::ranges::find_if(all, [&](Enumeration each) { return storedText(each) == text; });
    if (found == all.end())
        return false;
    value = *found;
    return true;
}

bool read(const json& stored, LaunchAppearanceMode& value) {
    return readStoredText(stored, allAppearanceModes, value);
}

bool read(const json& stored, SearchPathActionTargetType& value) {
    return readStoredText(stored, allTargetTypes, value);
}

template <typename Value>
bool readRequired(const json& object, const char* key, Value& value) {
    const json* stored = present(object, key);
    return stored && read(*stored, value);
}

bool readAction(const json& object, SearchPathAction& action) {
    return object.is_object() && readRequired(object, "appName", action.appName) &&
           readRequired(object, "binaryPath", action.binaryPath) &&
           readRequired(object, "targetType", action.targetType);
}

bool read(const json& stored, std::vector<SearchPathAction>& actions) {
    if (!stored.is_array())
        return false;
    actions.clear();
    actions.resize(stored.size()); // each gets a new id
    return std::ranges::equal(stored, actions, readAction);
}

bool readSettings(const json& object, LaunchSettings& settings) {
    return std::ranges::all_of(allSettings, [&](const Setting& setting) {
        const json* stored = present(object, setting.key);
        if (!stored)
            return !setting.isRequired;
        return std::visit([&](auto member) { return read(*stored, settings.*member); }, setting.member);
    });
}

json stored(const std::string& text) {
    return text;
}

json stored(bool flag) {
    return flag;
}

json stored(LaunchAppearanceMode mode) {
    return storedText(mode);
}

json stored(const std::vector<SearchPathAction>& actions) {
    json array = json::array();
    for (const SearchPathAction& action : actions)
        array.push_back({{"appName", action.appName},
                         {"binaryPath", action.binaryPath},
                         {"targetType", storedText(action.targetType)}});
    return array;
}

json settingsObject(const LaunchSettings& settings) {
    json object = json::object();
    for (const Setting& setting : allSettings)
        object[setting.key] =
            std::visit([&](auto member) { return stored(settings.*member); }, setting.member);
    return object;
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
        return LaunchError::settingsFileInvalid(path);
    return settings;
}

Result<void> writeSettings(const std::string& configurationDirectory, const LaunchSettings& settings) {
    return writeJSONObject(settingsFilePath(configurationDirectory), settingsObject(settings));
}

} // namespace kavendra
