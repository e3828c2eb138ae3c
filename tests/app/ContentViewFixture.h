#pragma once

#include "app/ContentView.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingProcesses.h"
#include "tests/support/TestExecutors.h"

namespace kavendra {

/// A content view with a temporary configuration directory and a recording desktop. There are three items,
/// alpha, beta and gamma, and no built-in ones. PATH is the configuration directory.
class ContentViewFixture : public testing::Test {
protected:
    static constexpr const char* header = "Title,Command,Params,Keywords\n";

    ContentViewFixture() {
        configuration.write("kavendra-settings.json", settings(""));
        configuration.write("kavendra-state.json", "{}");
        writeItems(
            "alpha,https://a.example/,,first common\nbeta,missing-program,x,common\ngamma,/,,common\n");
    }

    /// Returns a settings file with the fixture's directories and more members.
    std::string settings(const std::string& members) const {
        return R"({"dataDirectoryPath": ")" + configuration.path("data") + R"(", "logDirectoryPath": ")" +
               configuration.path("log") + R"(")" + members + "}";
    }

    void writeItems(const std::string& rows) const { configuration.write("data/items.csv", header + rows); }

    /// Starts as the program does.
    void start() {
        content.start();
        content.appear();
    }

    std::string status() const { return state().lastActionMessage; }
    std::string dialogText() const { return state().errorDialogMessage.value_or("no dialog"); }
    std::string log() const { return configuration.read("log/kavendra.log"); }

    std::string selectedTitle() const {
        const auto item = content.selectedItem();
        return item ? item->title : "nothing";
    }

    void moveSelection(int offset) {
        content.select(movedSelection(content.filteredItems(), state().selectedItemID, offset));
    }

    const ContentViewState& state() const { return content.state(); }

    TemporaryDirectory configuration;
    RecordingDesktop desktop;
    RecordingProcesses processes{{"PATH=" + configuration.path()}};
    HoldingExecutor executor; ///< holds nothing until isHolding is set
    ContentView content{desktop, processes, executor, configuration.path(),
                        configuration.path("Built-in.csv")};
};

} // namespace kavendra
