#pragma once

#include "launch/ExcelIntegration.h"
#include "launch/ItemActions.h"
#include "launch/SearchPathActions.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/MenuText.h"
#include "tests/support/RecordingDesktop.h"
#include "tests/support/RecordingProcesses.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

/// A home directory with a folder, a file and a workbook in it, and actions that only record.
class ActionsFixture : public testing::Test {
protected:
    ActionsFixture() {
        setenv("HOME", home.path().c_str(), 1);
        std::filesystem::create_directories(home.path("folder/inner"));
        std::filesystem::create_directories(home.path("folder.xlsx"));
        home.write("notes.txt", "");
        home.write("Book.XLSX", "the workbook");
        chmod(home.write("tool", "#!/bin/sh\n").c_str(), 0755);
    }

    void installExcel() { std::filesystem::create_directories(excelPath); }

    ReportOutcome report() {
        return [this](const ActionOutcome& outcome) {
            reported = outcome ? *outcome : "! " + outcome.error().description;
        };
    }

    /// Returns what an action reported and what it asked of the desktop and the system, and forgets both.
    std::string takeReport() {
        std::string text = std::exchange(reported, "nothing reported");
        for (auto* calls : {&desktop.calls, &processes.calls}) {
            for (const std::string& call : *calls)
                text += "; " + call;
            calls->clear();
        }
        return text;
    }

    TemporaryDirectory home;
    RecordingDesktop desktop;
    RecordingProcesses processes{{"PATH=" + home.path()}};
    Launcher launcher{desktop, processes, [](std::string_view) {}};
    std::string excelPath = home.path("Microsoft Excel.app");
    ExcelIntegration excel{launcher, excelPath};
    ItemActions itemActions{desktop, launcher, excel};
    SearchPathActions searchPathActions{desktop, processes, launcher};
    std::string reported = "nothing reported";
};

} // namespace kavendra
