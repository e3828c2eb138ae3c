#include "config/SettingsFile.h"

#include "config/StateFile.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>

namespace kavendra {

namespace {

const std::string settingsName = "kavendra-settings.json";
const std::string stateName = "kavendra-state.json";

/// A settings file with the two required keys and whatever else.
std::string settingsWith(const std::string& members) {
    return R"({"dataDirectoryPath": "/d", "logDirectoryPath": "/l")" + members + "}";
}

Result<LaunchSettings> loaded(const std::string& bytes) {
    const TemporaryDirectory directory;
    directory.write(settingsName, bytes);
    auto settings = loadSettings(directory.path());
    if (!settings) {
        EXPECT_EQ(settings.error().description, "Settings file is invalid: " + directory.path(settingsName));
    }
    EXPECT_EQ(directory.read(settingsName), bytes) << "loading does not write";
    return settings;
}

} // namespace

TEST(SettingsFile, missingAndNullKeysTakeTheirDefaults) {
    for (const char* members : {"", R"(, "showStatusMessage": null, "showDebugSummary": null,
              "showBuiltinItems": null, "selectAllTextOnFocus": null, "appearanceMode": null,
              "searchPathActions": null, "columnWidths": {"Title": "leftover"})"}) {
        const auto settings = loaded(settingsWith(members));
        ASSERT_TRUE(settings);
        EXPECT_EQ(settings->dataDirectoryPath, "/d");
        EXPECT_EQ(settings->logDirectoryPath, "/l");
        EXPECT_TRUE(settings->showStatusMessage);
        EXPECT_FALSE(settings->showDebugSummary);
        EXPECT_TRUE(settings->showBuiltinItems);
        EXPECT_FALSE(settings->selectAllTextOnFocus);
        EXPECT_EQ(settings->appearanceMode, LaunchAppearanceMode::system);
        ASSERT_EQ(settings->searchPathActions.size(), 2U);
        EXPECT_EQ(settings->searchPathActions[0].binaryPath, "code");
        EXPECT_EQ(settings->searchPathActions[0].targetType, SearchPathActionTargetType::directory);
        EXPECT_EQ(settings->searchPathActions[1].targetType, SearchPathActionTargetType::file);
        EXPECT_NE(settings->searchPathActions[0].id, settings->searchPathActions[1].id);
    }
}

TEST(SettingsFile, everythingElseIsInvalid) {
    for (const char* bytes : {"", "{", "[]", "null", "\xFF\xFE{", R"({"dataDirectoryPath": "/d"})",
                              R"({"dataDirectoryPath": null, "logDirectoryPath": "/l"})"})
        EXPECT_FALSE(loaded(bytes)) << bytes;
    for (const char* members :
         {R"("appearanceMode": "dark")", R"("appearanceMode": 1)", R"("showStatusMessage": 1)",
          R"("showStatusMessage": "true")", R"("searchPathActions": {})", R"("searchPathActions": [[]])",
          R"("searchPathActions": [{"appName": "a", "binaryPath": "b"}])",
          R"("searchPathActions": [{"appName": "a", "binaryPath": "b", "targetType": "file"}])"})
        EXPECT_FALSE(loaded(settingsWith(", " + std::string(members)))) << members;
    EXPECT_FALSE(loaded(settingsWith("}, {")));
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    EXPECT_FALSE(loaded(settingsWith(", \"x\": " + deep)));
    EXPECT_FALSE(loaded(settingsWith("") + std::string(2 << 20, ' ')));
    const TemporaryDirectory directory;
    EXPECT_FALSE(loadSettings(directory.path())) << "no file";
    std::filesystem::create_directories(directory.path(settingsName));
    EXPECT_FALSE(loadSettings(directory.path())) << "a directory";
}

TEST(SettingsFile, readsEveryKeyAndWritesThemInOrder) {
    const std::string bytes = R"({
  "appearanceMode": "Dark",
  "dataDirectoryPath": "/data",
  "logDirectoryPath": "/logs \"x\" 日本",
  "searchPathActions": [
    {
      "appName": "日本",
      "binaryPath": "~/bin/x",
      "targetType": "File"
    }
  ],
  "selectAllTextOnFocus": true,
  "showBuiltinItems": false,
  "showDebugSummary": true,
  "showStatusMessage": false
}
)";
    const auto settings = loaded(bytes);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->appearanceMode, LaunchAppearanceMode::dark);
    EXPECT_EQ(settings->logDirectoryPath, "/logs \"x\" 日本");
    EXPECT_TRUE(settings->selectAllTextOnFocus);
    EXPECT_FALSE(settings->showBuiltinItems);
    EXPECT_TRUE(settings->showDebugSummary);
    EXPECT_FALSE(settings->showStatusMessage);
    ASSERT_EQ(settings->searchPathActions.size(), 1U);
    EXPECT_EQ(settings->searchPathActions[0].appName, "日本");
    const TemporaryDirectory directory;
    ASSERT_TRUE(writeSettings(directory.path(), *settings));
    EXPECT_EQ(directory.read(settingsName), bytes);
    EXPECT_TRUE(loaded(settingsWith(R"(, "searchPathActions": [])"))->searchPathActions.empty());
    const std::string action = R"({"targetType": "File", "appName": "a", "binaryPath": "b"})";
    const auto twice = loaded(settingsWith(", \"searchPathActions\": [" + action + ", " + action + "]"));
    EXPECT_NE(twice->searchPathActions.at(0).id, twice->searchPathActions.at(1).id);
}

TEST(SettingsFile, aSaveThatFailsKeepsTheOldFile) {
    const TemporaryDirectory directory;
    ASSERT_TRUE(writeSettings(directory.path(), defaultSettings("/old")));
    const std::string old = directory.read(settingsName);
    EXPECT_FALSE(writeSettings(directory.path(), defaultSettings("/not UTF-8: \xFF")));
    {
        const ScopedFileSizeLimit limit(512);
        EXPECT_FALSE(writeSettings(directory.path(), defaultSettings(std::string(4000, 'x'))));
    }
    EXPECT_EQ(directory.read(settingsName), old);
}

TEST(ConfigurationFiles, aFirstRunCreatesAllThreeFilesOnce) {
    const TemporaryDirectory parent;
    const std::string directory = parent.path("deep/kavendra");
    ASSERT_TRUE(prepareConfigurationFiles(directory));
    const auto settings = loadSettings(directory);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->dataDirectoryPath, directory);
    EXPECT_EQ(settings->logDirectoryPath, directory);
    EXPECT_TRUE(loadState(directory)->columnWidths.empty());
    const std::string sample = parent.read("deep/kavendra/Sample.csv");
    EXPECT_TRUE(sample.starts_with("Title,Command,Params,Keywords\nOpen Apple,http")) << sample;
    EXPECT_TRUE(sample.ends_with(" ide")) << "no line feed at the end";

    std::filesystem::remove(directory + "/Sample.csv");
    std::filesystem::remove(directory + "/" + stateName);
    ASSERT_TRUE(prepareConfigurationFiles(directory));
    EXPECT_FALSE(std::filesystem::exists(directory + "/Sample.csv"))
        << "the sample comes on the first run only";
    EXPECT_TRUE(std::filesystem::exists(directory + "/" + stateName));
}

TEST(ConfigurationFiles, takesColumnWidthsOverFromTheOlderSettings) {
    const ColumnWidths none;
    struct Case {
        const char* members;
        ColumnWidths expected;
    };
    for (const auto& [members, expected] : {
             Case{R"(, "columnWidths": {"Title": 120, "Gone": 80.5})", {{"Title", 120}, {"Gone", 80.5}}},
             Case{R"(, "columnWidths": {"Title": "wide"})", none},
             Case{R"(, "columnWidths": [1])", none},
             Case{"", none},
         }) {
        SCOPED_TRACE(members);
        const TemporaryDirectory directory;
        directory.write(settingsName, settingsWith(members));
        ASSERT_TRUE(prepareConfigurationFiles(directory.path()));
        EXPECT_EQ(loadState(directory.path())->columnWidths, expected);
    }
    const TemporaryDirectory directory;
    directory.write(settingsName, settingsWith(R"(, "columnWidths": {"Title": 120})"));
    directory.write(stateName, "{}");
    ASSERT_TRUE(prepareConfigurationFiles(directory.path()));
    EXPECT_EQ(directory.read(stateName), "{}") << "an existing state is never touched";
}

TEST(ConfigurationFiles, failsWithTheSystemsReason) {
    const TemporaryDirectory parent;
    parent.write("file", "");
    const auto prepared = prepareConfigurationFiles(parent.path("file/kavendra"));
    ASSERT_FALSE(prepared);
    EXPECT_EQ(prepared.error().description, parent.path("file/kavendra") + ": Not a directory");
}

} // namespace kavendra
