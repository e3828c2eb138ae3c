#include "config/StateFile.h"

#include "config/ConfigErrors.h"
#include "config/JSONFile.h"
#include "platform/Paths.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace kavendra {

using nlohmann::json;

namespace {

std::optional<ColumnWidths> readWidths(const json& object) {
    if (!object.is_object())
        return std::nullopt;
    ColumnWidths widths;
    for (const auto& [identifier, width] : object.items()) {
        if (!width.is_number())
            return std::nullopt;
        widths[identifier] = width.get<double>();
    }
    return widths;
}

} // namespace

std::string stateFilePath(const std::string& configurationDirectory) {
    return joinedPath(configurationDirectory, "kavendra-state.json");
}

Result<LaunchState> loadState(const std::string& configurationDirectory) {
    const std::string path = stateFilePath(configurationDirectory);
    if (const auto object = readJSONObject(path)) {
        const auto member = object->find("columnWidths");
        if (member == object->end() || member->is_null())
            return LaunchState{};
        if (auto widths = readWidths(*member))
            return LaunchState{std::move(*widths)};
    }
    return LaunchError::stateFileInvalid(path);
}

Result<void> writeState(const std::string& configurationDirectory, const LaunchState& state) {
    return writeJSONObject(stateFilePath(configurationDirectory), {{"columnWidths", state.columnWidths}});
}

LaunchState stateOfOlderSettings(std::string_view settingsBytes) {
    const auto object = parseJSONObject(settingsBytes);
    if (!object || !object->contains("columnWidths"))
        return {};
    return {readWidths(object->at("columnWidths")).value_or(ColumnWidths{})};
}

std::optional<ColumnWidths> widthsAfterResize(const ColumnWidths& widths, const std::string& columnIdentifier,
                                              double reported) {
    const double rounded = std::round(reported);
    const auto stored = widths.find(columnIdentifier);
    if (stored != widths.end() && stored->second == rounded)
        return std::nullopt;
    ColumnWidths changed = widths;
    changed[columnIdentifier] = rounded;
    return changed;
}

} // namespace kavendra
