#include "config/JSONEncoding.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace kavendra {

using nlohmann::json;

namespace {

constexpr const char* columnWidthsKey = "columnWidths";

std::optional<json> parsedObject(std::string_view bytes) {
    bool isTooDeep = false;
    const auto limitDepth = [&isTooDeep](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > maximumJSONDepth;
        return !isTooDeep;
    };
    json parsed = json::parse(bytes, limitDepth, /*allow_exceptions=*/false);
    if (isTooDeep || !parsed.is_object())
        return std::nullopt;
    return parsed;
}

std::optional<std::string> textOf(const json& object) {
    try {
        return object.dump(2) + "\n";
    } catch (const json::exception&) { // a string is not UTF-8
        return std::nullopt;
    }
}

/// Returns the member, or null when it is missing or JSON null.
const json* present(const json& object, const char* key) {
    const auto member = object.find(key);
    return member == object.end() || member->is_null() ? nullptr : &*member;
}

// Each read() converts a JSON value; it returns false if the value has the wrong type.

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

bool read(const json& object, ColumnWidths& widths) {
    return object.is_object() && std::ranges::all_of(object.items(), [&widths](const auto& member) {
               if (!member.value().is_number())
                   return false;
               widths[member.key()] = member.value().template get<double>();
               return true;
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

} // namespace

std::optional<LaunchSettings> decodedSettings(std::string_view bytes) {
    const auto object = parsedObject(bytes);
    if (!object)
        return std::nullopt;
    LaunchSettings settings;
    for (const Setting& setting : allSettings) {
        const json* stored = present(*object, setting.key);
        const auto readMember = [&](auto member) { return read(*stored, settings.*member); };
        if (stored ? !std::visit(readMember, setting.member) : setting.isRequired)
            return std::nullopt;
    }
    return settings;
}

std::optional<std::string> encoded(const LaunchSettings& settings) {
    json object = json::object();
    for (const Setting& setting : allSettings)
        object[setting.key] =
            std::visit([&](auto member) { return stored(settings.*member); }, setting.member);
    return textOf(object);
}

std::optional<LaunchState> decodedState(std::string_view bytes) {
    const auto object = parsedObject(bytes);
    if (!object)
        return std::nullopt;
    LaunchState state;
    const json* stored = present(*object, columnWidthsKey);
    if (stored && !read(*stored, state.columnWidths))
        return std::nullopt;
    return state;
}

std::optional<std::string> encoded(const LaunchState& state) {
    return textOf({{columnWidthsKey, state.columnWidths}});
}

LaunchState stateOfOlderSettings(std::string_view settingsBytes) {
    return decodedState(settingsBytes).value_or(LaunchState());
}

} // namespace kavendra
