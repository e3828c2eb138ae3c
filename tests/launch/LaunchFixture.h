#pragma once

#include "launch/ExcelIntegration.h"
#include "launch/ItemActions.h"
#include "launch/TypedPathActions.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/MenuText.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

/// A home directory with a folder, a file, a workbook and a program in it; what is launched is only recorded.
class LaunchFixture : public testing::Test {
protected:
    LaunchFixture() {
        setenv("HOME", home.path().c_str(), 1);
        std::filesystem::create_directories(inner);
        std::filesystem::create_directories(home.path("folder.xlsx"));
        home.write("notes.txt", "");
        home.write("Book.XLSX", "the workbook");
        chmod(home.write("tool", "#!/bin/sh\n").c_str(), 0755);
    }

    void installExcel() { std::filesystem::create_directories(excelPath); }

    ReportOutcome report() {
        return [this](const ActionOutcome& outcome) { reported = outcomeText(outcome); };
    }

    /// Returns the words of an outcome, a failure's behind "! ".
    static std::string outcomeText(const auto& outcome) {
        return outcome ? std::string(*outcome) : "! " + outcome.error().description;
    }

    /// Returns an outcome and what was asked of the desktop and the system until then, and forgets that.
    std::string withCalls(std::string outcome) {
        for (auto* calls : {&desktop.calls, &processes.calls})
            for (const std::string& call : std::exchange(*calls, {}))
                outcome += "; " + call;
        return outcome;
    }

    /// Returns what choosing an entry reports, and what it asks.
    std::string chosen(const Menu& menu, const std::string& title) {
        reported = "nothing reported";
        choose(menu, title);
        return withCalls(reported);
    }

    TemporaryDirectory home;
    const std::string folder = home.path("folder"), inner = home.path("folder/inner"),
                      notes = home.path("notes.txt"), tool = home.path("tool");
    RecordingDesktop desktop;
    RecordingProcesses processes{{"PATH=" + home.path()}};
    std::vector<std::string> log;
    Launcher launcher{desktop, processes, [this](std::string_view line) { log.emplace_back(line); }};
    std::string excelPath = home.path("Microsoft Excel.app");
    ExcelIntegration excel{launcher, excelPath};
    ItemActions itemActions{desktop, launcher, excel};
    TypedPathActions searchPathActions{desktop, processes, launcher};
    std::string reported;
};

} // namespace kavendra
