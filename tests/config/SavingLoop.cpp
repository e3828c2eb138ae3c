// Program for tools/kill-test.
// usage: saving_loop save DIRECTORY   saves settings and state until it is killed
//        saving_loop check DIRECTORY  succeeds if both files hold one complete save
#include "config/JSONEncoding.h"
#include "config/SettingsFile.h"
#include "config/StateFile.h"
#include "platform/FileReplacement.h"

#include <algorithm>
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
    std::vector<std::pair<std::string, std::string>> saves;
    for (const bool isLong : {true, false}) {
        saves.emplace_back(settingsFilePath(directory), *encoded(settingsOf(isLong)));
        saves.emplace_back(stateFilePath(directory), *encoded(stateOf(isLong)));
    }
    for (;;)
        for (const auto& [path, content] : saves)
            if (!replaceFile(path, content))
                return false;
}

bool isWhole(const std::string& directory) {
    const auto settings = loadSettings(directory);
    const auto state = loadState(directory);
    constexpr std::array lengths{false, true};
    const auto hasSettings = [&](bool isLong) {
        return settings->dataDirectoryPath == settingsOf(isLong).dataDirectoryPath;
    };
    const auto hasState = [&](bool isLong) { return *state == stateOf(isLong); };
    return settings && state && std::ranges::any_of(lengths, hasSettings) &&
           std::ranges::any_of(lengths, hasState);
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
