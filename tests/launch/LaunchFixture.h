#pragma once

#include "launch/Launcher.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>

namespace kavendra {

/// A launcher with a recording desktop. The home directory, which is also PATH, holds a folder, a file, a
/// workbook and a program.
class LaunchFixture : public testing::Test {
protected:
    LaunchFixture() {
        setenv("HOME", home.path().c_str(), 1);
        std::filesystem::create_directories(folder);
        std::filesystem::create_directories(home.path("folder.xlsx"));
        home.write("notes.txt", "");
        home.write("Book.XLSX", "the workbook");
        home.writeProgram("tool");
    }

    /// Returns the message or, after "! ", the failure, and the calls made since the last call of this.
    std::string text(ActionOutcome outcome) {
        if (outcome && outcome->program.valid())
            outcome = outcomeOfProgram(*outcome);
        std::string text = outcome ? outcome->message : "! " + outcome.error().description;
        for (auto* calls : {&desktop.calls, &processes.calls})
            for (const std::string& call : std::exchange(*calls, {}))
                text += "; " + call;
        return text;
    }

    TemporaryDirectory home;
    const std::string folder = home.path("folder"), notes = home.path("notes.txt"), tool = home.path("tool");
    RecordingDesktop desktop;
    RecordingProcesses processes{{"PATH=" + home.path()}};
    std::vector<std::string> log;
    Launcher launcher{desktop, processes, [this](std::string_view line) { log.emplace_back(line); }};
};

} // namespace kavendra
