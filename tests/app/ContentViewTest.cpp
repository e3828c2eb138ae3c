#include "tests/app/ContentViewFixture.h"
#include "tests/support/Limits.h"

#include <gmock/gmock.h>

namespace kavendra {

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

using ContentViewTest = ContentViewFixture;

} // namespace

TEST_F(ContentViewTest, startReadsTheSettingsAndTheStartupStatus) {
    EXPECT_EQ(state().appSettings.dataDirectoryPath, configuration.path());
    desktop.startupStatus = StartupRegistrationStatus::enabled;
    start();
    EXPECT_EQ(state().appSettings.dataDirectoryPath, configuration.path("data"));
    EXPECT_THAT(desktop.appearances, testing::Contains(Appearance::system));
    EXPECT_EQ(state().startupRegistrationStatus, StartupRegistrationStatus::enabled);
}

TEST_F(ContentViewTest, searchTextFiltersAndKeepsTheSelectionVisible) {
    start();
    content.select(lastSelection(content.filteredItems()));
    EXPECT_EQ(selectedTitle(), "gamma");
    content.setSearchText("common");
    EXPECT_EQ(selectedTitle(), "gamma");
    content.setSearchText("COMMON first");
    EXPECT_EQ(selectedTitle(), "alpha");
    content.setSearchText("nowhere");
    content.launchSelected();
    EXPECT_EQ(status(), "No item selected");
    content.setSearchText("");
    EXPECT_EQ(selectedTitle(), "alpha");
    EXPECT_EQ(content.filteredItems().size(), 3U);
}

TEST_F(ContentViewTest, moveSelectionStopsAtBothEnds) {
    start();
    moveSelection(-1);
    EXPECT_EQ(selectedTitle(), "alpha");
    for (int step = 0; step < 3; ++step)
        moveSelection(+1);
    EXPECT_EQ(selectedTitle(), "gamma");
    int changes = 0;
    content.stateChanged = [&changes] { ++changes; };
    moveSelection(+1);
    EXPECT_EQ(changes, 1) << "so that the window scrolls back to the item";
    content.select(std::nullopt);
    moveSelection(-1);
    EXPECT_EQ(selectedTitle(), "gamma");
    content.select(UUID::random());
    moveSelection(+1);
    EXPECT_EQ(selectedTitle(), "alpha");
    content.setSearchText("nowhere");
    moveSelection(+1);
    EXPECT_EQ(state().selectedItemID, std::nullopt);
}

TEST_F(ContentViewTest, launchReportsSuccessOrFailure) {
    start();
    const std::string logBefore = log();
    content.launchSelected();
    EXPECT_THAT(desktop.calls, ElementsAre("openURL https://a.example/"));
    EXPECT_EQ(status(), "Launched (url): alpha");
    EXPECT_EQ(log(), logBefore) << "a success is not logged";

    moveSelection(+1);
    content.launchSelected();
    const std::string message = "Command not found: missing-program";
    EXPECT_EQ(status(), message);
    EXPECT_EQ(dialogText(), message);
    EXPECT_THAT(log(), EndsWith("] " + message + "\n"));
    EXPECT_EQ(selectedTitle(), "beta");
}

TEST_F(ContentViewTest, failedReloadClearsTheItems) {
    start();
    const auto firstID = state().selectedItemID;
    writeItems("\"open");
    content.reloadData();
    EXPECT_TRUE(state().items->list.empty());
    EXPECT_EQ(state().selectedItemID, std::nullopt);
    EXPECT_EQ(dialogText(), "Invalid CSV format: unterminated quote");
    EXPECT_THAT(log(), EndsWith("] Invalid CSV format: unterminated quote\n"));
    writeItems("alpha,,,\n");
    content.reloadData();
    EXPECT_EQ(selectedTitle(), "alpha");
    EXPECT_NE(state().selectedItemID, firstID);
    EXPECT_THAT(log(), HasSubstr("unterminated quote")) << "a reload does not empty the log";
}

TEST_F(ContentViewTest, failedReloadKeepsTheSettingsThatWereReadAndTheLog) {
    configuration.write("log/kavendra.log", "previous run\n");
    configuration.write("kavendra-settings.json", settings(R"(, "showDebugSummary": true)"));
    configuration.write("kavendra-state.json", "[");
    start();
    EXPECT_EQ(dialogText(), "State file is invalid: " + configuration.path("kavendra-state.json"));
    EXPECT_TRUE(state().appSettings.showDebugSummary);
    configuration.write("kavendra-settings.json", "{}");
    content.reloadData();
    EXPECT_EQ(dialogText(), "Settings file is invalid: " + configuration.path("kavendra-settings.json"));
    EXPECT_TRUE(state().appSettings.showDebugSummary) << "the previous settings";
    EXPECT_THAT(log(), testing::StartsWith("previous run\n["));
    configuration.write("kavendra-settings.json", settings(""));
    configuration.write("kavendra-state.json", "{}");
    content.reloadData();
    EXPECT_THAT(log(), testing::Not(HasSubstr("previous run"))) << "emptied by the first valid load";
}

TEST_F(ContentViewTest, failedLogWriteIsAddedToTheStatus) {
    start();
    std::filesystem::remove_all(configuration.path("log"));
    configuration.write("log", "a file");
    moveSelection(+1);
    content.launchSelected();
    EXPECT_EQ(status(), "Command not found: missing-program | Log write failed");
    EXPECT_EQ(dialogText(), "Command not found: missing-program");

    ContentView next(desktop, processes, executor, configuration.path(), "");
    next.start();
    const std::string reason = configuration.path("log") + ": Not a directory";
    EXPECT_EQ(next.state().errorDialogMessage, reason);
    EXPECT_EQ(next.state().lastActionMessage, reason + " | Log write failed");
}

TEST_F(ContentViewTest, columnWidthIsAdoptedOnlyIfItWasWritten) {
    start();
    content.updateColumnWidth("Title", 150.4);
    EXPECT_EQ(state().appState.columnWidths.at("Title"), 150);
    const std::string written = configuration.read("kavendra-state.json");
    EXPECT_THAT(written, HasSubstr("150"));

    const ScopedFileSizeLimit limit(8);
    content.updateColumnWidth("Title", 200);
    EXPECT_EQ(state().appState.columnWidths.at("Title"), 150);
    EXPECT_THAT(dialogText(), HasSubstr("kavendra-state.json: File too large"));
    EXPECT_EQ(configuration.read("kavendra-state.json"), written);
}

} // namespace kavendra
