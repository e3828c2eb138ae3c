// Program for tools/kill-test.
// usage: saving_loop save DIRECTORY   saves settings and state until it is killed
//        saving_loop check DIRECTORY  succeeds if both files hold one complete save
#include "config/JSONEncoding.h"
#include "config/SettingsFile.h"
#include "config/StateFile.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace kavendra;

/// Returns the settings of a short or a long file. A mixture of both is invalid.
LaunchSettings settingsOf(bool isLong) {
    return defaultSettings(std::string(isLong ? 20000 : 20, isLong ? 'l' : 's'));
}

LaunchState stateOf(bool isLong) {
    return {{{std::string(isLong ? 20000 : 20, isLong ? 'l' : 's'), 100}}};
}

/// Saves prepared bytes: encoding would take most of the time, and few kills would hit a save.
bool saveForever(const std::string& directory) {
    const std::array paths{settingsFilePath(directory), stateFilePath(directory)};
    std::vector<std::pair<std::string, std::string>> saves;
    for (const bool isLong : {true, false}) {
        if (!writeSettings(directory, settingsOf(isLong)) || !writeState(directory, stateOf(isLong)))
            return false;
        for (const std::string& path : paths)
            saves.emplace_back(path, readFile(path, maximumJSONFileSize)->view());
    }
    for (;;)
        for (const auto& [path, content] : saves)
            if (!replaceFile(path, content))
                return false;
}

bool isWhole(const std::string& directory) {
    const auto settings = loadSettings(directory);
    const auto state = loadState(directory);
    const auto is = [&](bool isLong) {
        return std::pair{settings->dataDirectoryPath == settingsOf(isLong).dataDirectoryPath,
                         state->columnWidths == stateOf(isLong).columnWidths};
    };
    if (!settings || !state)
        return false;
    const auto [shortSettings, shortState] = is(false);
    const auto [longSettings, longState] = is(true);
    return (shortSettings || longSettings) && (shortState || longState);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 3)
        return 2;
    const bool succeeded = std::string_view(argv[1]) == "save" ? saveForever(argv[2]) : isWhole(argv[2]);
    if (!succeeded)
        std::fprintf(stderr, "%s: %s failed\n", argv[2], argv[1]);
    return succeeded ? 0 : 1;
}
