#include "config/JSONEncoding.h"
#include "config/SettingsFile.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchDirectory.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

using namespace kavendra;

namespace {

/// Returns whether the settings are equal except for the actions' identities, which each load generates.
bool isSameFile(const LaunchSettings& a, const LaunchSettings& b) {
    const auto plain = [](const LaunchSettings& s) {
        return std::tie(s.dataDirectoryPath, s.logDirectoryPath, s.showStatusMessage, s.showDebugSummary,
                        s.showBuiltinItems, s.selectAllTextOnFocus, s.appearanceMode);
    };
    const auto action = [](const SearchPathAction& each) {
        return std::tie(each.appName, each.binaryPath, each.targetType);
    };
    return plain(a) == plain(b) &&
           std::ranges::equal(a.searchPathActions, b.searchPathActions, {}, action, action);
}

} // namespace

/// Loading leaves the file unchanged. Settings that were loaded and written are loaded as the same settings
/// and written as the same bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    const std::string file = settingsFilePath(scratch.path);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    writeBytes(file, bytes);
    for (const auto& [column, width] : stateOfOlderSettings(bytes).columnWidths)
        require(width == width);

    const auto settings = loadSettings(scratch.path);
    require(readBytes(file) == bytes);
    if (!settings) {
        require(settings.error().description == "Settings file is invalid: " + file);
        return 0;
    }
    require(writeSettings(scratch.path, *settings).has_value());
    const std::string written = readBytes(file);
    const auto again = loadSettings(scratch.path);
    require(again && isSameFile(*settings, *again));
    require(writeSettings(scratch.path, *again) && readBytes(file) == written);
    return 0;
}
