// The orders in which slow loads, answers and actions can end. The executor holds work back.

#include "app/WindowMenus.h"
#include "tests/app/ContentViewFixture.h"
#include "tests/support/MenuText.h"

#include <gmock/gmock.h>

#include <future>

namespace kavendra {

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

class ContentViewOrderTest : public ContentViewFixture {
protected:
    ContentViewOrderTest() { executor.isHolding = true; }

    /// Starts and ends the first load.
    void startAndLoad() {
        start();
        executor.releaseAll();
    }

    std::string rows() const {
        std::string titles;
        for (std::size_t row = 0; row < content.filteredItems().size(); ++row)
            titles += content.filteredItems()[row].title + " ";
        return titles;
    }
};

} // namespace

TEST_F(ContentViewOrderTest, itemsAreAdoptedInOneStepWhenTheirLoadEnds) {
    int changes = 0;
    content.stateChanged = [&changes] { ++changes; };
    start();
    EXPECT_TRUE(state().isLoading);
    EXPECT_EQ(status(), "No item launched");
    content.setSearchText("common first");
    const std::string logBefore = log();
    EXPECT_THAT(logBefore, Not(HasSubstr("CSV headers")));
    changes = 0;
    executor.release();
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(state().isLoading);
    EXPECT_EQ(rows(), "alpha ") << "those that fit what was typed meanwhile";
    EXPECT_EQ(selectedTitle(), "alpha");
    EXPECT_EQ(status(), "Loaded 3 items");
    EXPECT_THAT(log(), EndsWith("] CSV headers (items.csv): Title | Command | Params | Keywords\n"));
}

TEST_F(ContentViewOrderTest, newestLoadWins) {
    startAndLoad();
    writeItems("old,,,\n");
    content.reloadData();
    EXPECT_EQ(rows(), "alpha beta gamma ") << "the old rows stay";
    content.reloadData();
    ASSERT_EQ(executor.held.size(), 2U);
    const auto older = std::move(executor.held[0]);
    executor.held.pop_front();
    writeItems("new,,,\n");
    executor.release();
    writeItems("\"open");
    older();
    EXPECT_EQ(rows(), "new ");
    EXPECT_EQ(dialogText(), "no dialog");
    EXPECT_THAT(log(), Not(HasSubstr("unterminated")));
}

TEST_F(ContentViewOrderTest, requestsBeyondFourLoadsBecomeOne) {
    start();
    for (int request = 0; request < 9; ++request)
        content.reloadData();
    EXPECT_EQ(executor.held.size(), 4U);
    executor.release();
    EXPECT_EQ(executor.held.size(), 4U) << "the last request has started";
    EXPECT_EQ(rows(), "");
    executor.release(3);
    EXPECT_EQ(status(), "Loaded 3 items");
    EXPECT_FALSE(state().isLoading);
    executor.releaseAll();
    EXPECT_EQ(rows(), "alpha beta gamma ");
}

TEST_F(ContentViewOrderTest, failedConfigurationDropsTheLoadBeforeIt) {
    start();
    configuration.write("kavendra-settings.json", "{");
    content.reloadData();
    EXPECT_FALSE(state().isLoading);
    executor.releaseAll();
    EXPECT_EQ(rows(), "");
    EXPECT_THAT(status(), HasSubstr("Settings file is invalid"));
}

TEST_F(ContentViewOrderTest, otherDataDirectoryReplacesALoadThatHangs) {
    configuration.write("other/items.csv", header + std::string("other,,,\n"));
    WindowMenus menus(content, desktop, processes, executor);
    start();
    menus.changeDataDirectory(configuration.path("other"));
    content.updateColumnWidth("Title", 150);
    executor.release(1); // the directory exists
    executor.release(1); // its load
    EXPECT_EQ(rows(), "other ");
    executor.release(); // the load that hung
    EXPECT_EQ(rows(), "other ");
    EXPECT_EQ(state().appSettings.dataDirectoryPath, configuration.path("other"));
    EXPECT_EQ(state().appState.columnWidths.at("Title"), 150);
}

TEST_F(ContentViewOrderTest, enterBeforeTheFirstRowsLaunchesTheSelectedRow) {
    start();
    content.setSearchText("gamma");
    content.launchSelected();
    executor.releaseAll();
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory /"));
    content.reloadData();
    content.launchSelected();
    EXPECT_TRUE(state().isActing) << "later, Enter launches the row shown";
}

TEST_F(ContentViewOrderTest, enterBeforeTheFirstRowsIsDroppedWhenTheTextChanges) {
    start();
    content.launchSelected();
    content.setSearchText("g");
    executor.releaseAll();
    EXPECT_THAT(desktop.calls, ElementsAre());
    EXPECT_EQ(status(), "Loaded 3 items");
}

TEST_F(ContentViewOrderTest, launchesThatEndOutOfOrder) {
    startAndLoad();
    content.launchSelected(); // alpha
    moveSelection(+2);
    content.launchSelected(); // gamma
    EXPECT_TRUE(state().isActing);
    executor.release(1);
    EXPECT_EQ(status(), "Launched (finder): gamma");
    EXPECT_TRUE(content.hasStepsInProgress());
    executor.release();
    EXPECT_EQ(status(), "Launched (finder): gamma") << "the older success";
    EXPECT_FALSE(state().isActing);
    EXPECT_THAT(desktop.calls, ElementsAre("showDirectory /", "openURL https://a.example/"));

    moveSelection(-1);
    content.launchSelected(); // beta, which fails
    moveSelection(+1);
    content.launchSelected(); // gamma
    executor.release(1);
    executor.release();
    EXPECT_EQ(status(), "Command not found: missing-program") << "the older failure";
    EXPECT_EQ(dialogText(), "Command not found: missing-program");
}

TEST_F(ContentViewOrderTest, loadDoesNotReplaceTheStatusOfANewerAction) {
    startAndLoad();
    content.reloadData();
    content.launchSelected();
    executor.release(1);
    executor.release();
    EXPECT_EQ(status(), "Launched (url): alpha");
}

TEST_F(ContentViewOrderTest, programThatStaysOpenCountsAsOpenedAndItsLaterFailureIsReported) {
    startAndLoad();
    std::promise<ProgramOutcome> ended;
    ActionSuccess opened("Opened file with Editor");
    opened.program = ended.get_future().share();
    opened.programPath = "/bin/editor";
    content.perform([opened] { return opened; });
    executor.release();
    EXPECT_FALSE(content.hasStepsInProgress()) << "the program is started";
    EXPECT_TRUE(state().isActing);
    executor.release(); // takes two seconds
    EXPECT_EQ(status(), "Opened file with Editor");
    EXPECT_FALSE(state().isActing);
    ended.set_value({.succeeded = false, .standardError = "lost the display"});
    executor.releaseAll();
    EXPECT_EQ(status(), "Script execution failed: lost the display");
}

TEST_F(ContentViewOrderTest, typedPathFollowsTheNewestTextWithFewQuestions) {
    startAndLoad();
    content.setSearchText("/");
    content.setSearchText("/no-such-path");
    EXPECT_FALSE(state().hasTypedPath);
    executor.release(1);
    executor.release();
    EXPECT_FALSE(state().hasTypedPath) << "the answer for the older text came last";
    content.setSearchText("/");
    executor.releaseAll();
    EXPECT_TRUE(state().hasTypedPath);
    content.setSearchText("");
    EXPECT_FALSE(state().hasTypedPath);
    EXPECT_TRUE(executor.held.empty());

    content.setSearchText("/dead");
    content.setStatus("a change of the state");
    EXPECT_EQ(executor.held.size(), 1U) << "one for each text";
    for (const char* text : {"/dead/", "/dead/a", "/dead/ab", "/dead/abc", "/"})
        content.setSearchText(text);
    EXPECT_EQ(executor.held.size(), 4U);
    executor.releaseAll();
    EXPECT_TRUE(state().hasTypedPath) << "the newest text";
}

TEST_F(ContentViewOrderTest, menuEntriesWithoutAnAnswerAreEnabled) {
    startAndLoad();
    WindowMenus menus(content, desktop, processes, executor);
    content.setSearchText("/no-such-path");
    const Menu menu = menus.typedPathMenu();
    EXPECT_TRUE(findEntry(menu, "Copy Filename")->isEnabled);
    choose(menu, "Copy Filename");
    executor.releaseAll();
    EXPECT_EQ(status(), "No filename to copy") << "the action looks again";
}

} // namespace kavendra
