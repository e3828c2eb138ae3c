#include "config/StateFile.h"

#include "config/ConfigErrors.h"
#include "config/JSONEncoding.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <cerrno>
#include <cmath>

namespace kavendra {

std::string stateFilePath(const std::string& configurationDirectory) {
    return joinedPath(configurationDirectory, "kavendra-state.json");
}

Result<LaunchState> loadState(const std::string& configurationDirectory) {
    const std::string path = stateFilePath(configurationDirectory);
    const auto bytes = readFile(path, maximumJSONFileSize);
    auto state = bytes ? decodedState(bytes->view()) : std::nullopt;
    if (!state)
        return LaunchError::stateFileInvalid(path);
    return std::move(*state);
}

Result<void> writeState(const std::string& configurationDirectory, const LaunchState& state) {
    const std::string path = stateFilePath(configurationDirectory);
    const auto text = encoded(state);
    return text ? replaceFile(path, *text) : systemFailure(path, EILSEQ);
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
