#include "config/SettingsFile.h"

#include "config/JSONEncoding.h"
#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace kavendra {

namespace {

const std::string settingsName = "kavendra-settings.json", stateName = "kavendra-state.json";

/// Returns a settings file with the two required keys and more members.
std::string settingsWith(const std::string& members) {
    return R"({"dataDirectoryPath": "/d", "logDirectoryPath": "/l")" + members + "}";
}

} // namespace

TEST(SettingsFile, missingAndNullKeysGetTheirDefaults) {
    const auto defaults = decodedSettings(settingsWith(
        R"(, "appearanceMode": "System", "selectAllTextOnFocus": false, "showBuiltinItems": true,
              "showDebugSummary": false, "showStatusMessage": true, "searchPathActions": [
              {"appName": "VS Code", "binaryPath": "code", "targetType": "Directory"},
              {"appName": "VS Code", "binaryPath": "code", "targetType": "File"}])"));
    for (const char* members : {"", R"(, "showStatusMessage": null, "showDebugSummary": null,
              "showBuiltinItems": null, "selectAllTextOnFocus": null, "appearanceMode": null,
              "searchPathActions": null, "columnWidths": {"Title": "unknown"})"}) {
        const auto settings = decodedSettings(settingsWith(members));
        ASSERT_TRUE(settings);
        EXPECT_EQ(encoded(*settings), encoded(*defaults));
        EXPECT_NE(settings->searchPathActions[0].id, settings->searchPathActions[1].id);
    }
}

TEST(SettingsFile, everyKeyIsReadAndWrittenInOrder) {
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
    const auto settings = decodedSettings(bytes);
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->logDirectoryPath, "/logs \"x\" 日本");
    EXPECT_TRUE(settings->selectAllTextOnFocus);
    EXPECT_EQ(encoded(*settings), bytes);
    EXPECT_TRUE(decodedSettings(settingsWith(R"(, "searchPathActions": [])"))->searchPathActions.empty());
}

TEST(SettingsFile, otherContentIsInvalid) {
    for (const char* bytes : {"", "{", "[]", "null", "\xFF\xFE{", R"({"dataDirectoryPath": "/d"})",
                              R"({"dataDirectoryPath": null, "logDirectoryPath": "/l"})"})
        EXPECT_FALSE(decodedSettings(bytes)) << bytes;
    for (const char* member :
         {R"("appearanceMode": "dark")", R"("appearanceMode": 1)", R"("showStatusMessage": 1)",
          R"("showStatusMessage": "true")", R"("searchPathActions": {})", R"("searchPathActions": [[]])",
          R"("searchPathActions": [{"appName": "a", "binaryPath": "b"}])",
          R"("searchPathActions": [{"appName": "a", "binaryPath": "b", "targetType": "file"}])"})
        EXPECT_FALSE(decodedSettings(settingsWith(", " + std::string(member)))) << member;
    EXPECT_FALSE(decodedSettings(settingsWith("}, {")));
    const std::string deep = std::string(100000, '[') + std::string(100000, ']');
    EXPECT_FALSE(decodedSettings(settingsWith(", \"x\": " + deep)));

    const TemporaryDirectory directory;
    const std::string path = directory.path(settingsName);
    EXPECT_EQ(loadSettings(directory.path()).error().description, "Settings file is invalid: " + path);
    std::filesystem::create_directories(path);
    EXPECT_FALSE(loadSettings(directory.path())) << "a directory";
    std::filesystem::remove(path);
    const std::string tooLarge = settingsWith("") + std::string(2 << 20, ' ');
    directory.write(settingsName, tooLarge);
    EXPECT_FALSE(loadSettings(directory.path()));
    EXPECT_EQ(directory.read(settingsName), tooLarge) << "an invalid file is not replaced";
}

TEST(SettingsFile, failedEncodingKeepsTheOldFile) {
    const TemporaryDirectory directory;
    ASSERT_TRUE(writeSettings(directory.path(), defaultSettings("/old")));
    EXPECT_EQ(writeSettings(directory.path(), defaultSettings("\xFF")).error().description,
              directory.path(settingsName) + ": Invalid or incomplete multibyte or wide character");
    EXPECT_EQ(loadSettings(directory.path())->dataDirectoryPath, "/old");
}

TEST(ConfigurationFiles, firstRunCreatesSettingsStateAndSample) {
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
    EXPECT_FALSE(std::filesystem::exists(directory + "/Sample.csv")) << "only on the first run";
    EXPECT_TRUE(std::filesystem::exists(directory + "/" + stateName));
}

TEST(ConfigurationFiles, missingStateGetsTheColumnWidthsOfOlderSettings) {
    const TemporaryDirectory directory;
    directory.write(settingsName, settingsWith(R"(, "columnWidths": {"Title": 120, "Gone": 80.5})"));
    ASSERT_TRUE(prepareConfigurationFiles(directory.path()));
    EXPECT_EQ(loadState(directory.path())->columnWidths, (ColumnWidths{{"Title", 120}, {"Gone", 80.5}}));
    directory.write(stateName, "{}");
    ASSERT_TRUE(prepareConfigurationFiles(directory.path()));
    EXPECT_EQ(directory.read(stateName), "{}") << "an existing state is not changed";
    for (const char* members : {R"(, "columnWidths": {"Title": "wide"})", R"(, "columnWidths": [1])", ""})
        EXPECT_EQ(stateOfOlderSettings(settingsWith(members)), LaunchState{}) << members;
}

} // namespace kavendra
