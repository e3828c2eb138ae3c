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
    for (const std::string& members :
         {std::string(),
          std::string(R"(, "showStatusMessage": null, "showDebugSummary": null, "showBuiltinItems": null,
              "selectAllTextOnFocus": null, "appearanceMode": null, "searchPathActions": null,
              "columnWidths": {"Title": "leftover"})")}) {
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

TEST(SettingsFile, readsWhatIsThere) {
    const auto settings = loaded(settingsWith(R"(, "appearanceMode": "Dark", "showStatusMessage": false,
        "searchPathActions": [{"targetType": "File", "appName": "日本", "binaryPath": "~/bin/x"}])"));
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->appearanceMode, LaunchAppearanceMode::dark);
    EXPECT_FALSE(settings->showStatusMessage);
    ASSERT_EQ(settings->searchPathActions.size(), 1U);
    EXPECT_EQ(settings->searchPathActions[0].appName, "日本");
    const std::string action = R"({"targetType": "File", "appName": "a", "binaryPath": "b"})";
    const auto twice = loaded(settingsWith(", \"searchPathActions\": [" + action + ", " + action + "]"));
    EXPECT_NE(twice->searchPathActions.at(0).id, twice->searchPathActions.at(1).id);
    EXPECT_TRUE(loaded(settingsWith(R"(, "searchPathActions": [])"))->searchPathActions.empty());
}

TEST(SettingsFile, everythingElseIsInvalid) {
    for (const std::string& bytes :
         {std::string(), std::string("{"), std::string("[]"), std::string("null"), std::string("\xFF\xFE{"),
          std::string(R"({"dataDirectoryPath": "/d"})"),
          std::string(R"({"dataDirectoryPath": null, "logDirectoryPath": "/l"})"),
          settingsWith(R"(, "appearanceMode": "dark")"), settingsWith(R"(, "appearanceMode": 1)"),
          settingsWith(R"(, "showStatusMessage": 1)"), settingsWith(R"(, "showStatusMessage": "true")"),
          settingsWith(R"(, "searchPathActions": {})"), settingsWith(R"(, "searchPathActions": [[]])"),
          settingsWith(R"(, "searchPathActions": [{"appName": "a", "binaryPath": "b"}])"),
          settingsWith(
              R"(, "searchPathActions": [{"appName": "a", "binaryPath": "b", "targetType": "file"}])"),
          settingsWith(", \"x\": " + std::string(100000, '[') + std::string(100000, ']')),
          settingsWith("}, {"), settingsWith("") + std::string(2 << 20, ' ')})
        EXPECT_FALSE(loaded(bytes)) << bytes.substr(0, 200);
    const TemporaryDirectory directory;
    EXPECT_FALSE(loadSettings(directory.path())) << "no file";
    std::filesystem::create_directories(directory.path(settingsName));
    EXPECT_FALSE(loadSettings(directory.path())) << "a directory";
}

TEST(SettingsFile, writesEveryKeyInOrderAndReadsItBack) {
    const TemporaryDirectory directory;
    LaunchSettings settings = defaultSettings("/data");
    settings.logDirectoryPath = "/logs \"x\" 日本";
    settings.appearanceMode = LaunchAppearanceMode::light;
    settings.selectAllTextOnFocus = true;
    ASSERT_TRUE(writeSettings(directory.path(), settings));
    const std::string text = directory.read(settingsName);
    std::size_t position = 0;
    for (const char* key : {"appearanceMode", "dataDirectoryPath", "logDirectoryPath", "searchPathActions",
                            "appName", "binaryPath", "targetType", "selectAllTextOnFocus", "showBuiltinItems",
                            "showDebugSummary", "showStatusMessage"}) {
        position = text.find('\n', position);
        position = text.find("\"" + std::string(key) + "\": ", position);
        ASSERT_NE(position, std::string::npos) << key;
    }
    auto read = loadSettings(directory.path());
    ASSERT_TRUE(read);
    for (std::size_t each = 0; each < 2; ++each)
        read->searchPathActions.at(each).id = settings.searchPathActions[each].id;
    EXPECT_EQ(*read, settings);
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
    struct Case {
        const char* name;
        std::string members;
        ColumnWidths expected;
    };
    for (const Case& c :
         {Case{
              "whole", R"(, "columnWidths": {"Title": 120, "Gone": 80.5})", {{"Title", 120}, {"Gone", 80.5}}},
          Case{"malformed", R"(, "columnWidths": {"Title": "wide"})", {}},
          Case{"of the wrong kind", R"(, "columnWidths": [1])", {}}, Case{"not there", "", {}}}) {
        SCOPED_TRACE(c.name);
        const TemporaryDirectory directory;
        directory.write(settingsName, settingsWith(c.members));
        ASSERT_TRUE(prepareConfigurationFiles(directory.path()));
        EXPECT_EQ(loadState(directory.path())->columnWidths, c.expected);
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
