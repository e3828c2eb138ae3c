#pragma once

#include "base/Result.h"
#include "data/LaunchItem.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// How an action that a person chose ended: the status message, also when there was nothing to act on, or the
/// failure to report.
using ActionOutcome = Result<std::string>;

/// Returns `message` when `done` succeeded, else its failure.
ActionOutcome outcomeOf(const Result<void>& done, std::string message);

/// Receives one line for the log; never fails.
using LogLine = std::function<void(std::string_view)>;

/// Launches items and opens what they name. Failures are those of LaunchErrors.h, or the system's error when
/// a program cannot be started.
class Launcher {
public:
    /// `desktop` and `processes` must outlive this. `appendLogLine` gets the failures that are only logged.
    Launcher(Desktop& desktop, Processes& processes, LogLine appendLogLine);

    /// Launches an item by the first rule that applies: params are a web address and the command is an
    /// application; the command is a web address; params are empty and the command is an existing directory,
    /// or an existing file; the command is a program. Returns "Launched (<kind>): <title>".
    ActionOutcome launch(const LaunchItem& item);

    /// Fails with applicationNotFound when there is no such application. A failure of the application itself
    /// is only logged.
    Result<void> openWebAddressWithApplication(const std::string& url, const std::string& applicationPath);

    /// Shows a directory in the file manager. Fails with failedToOpenInFinder.
    Result<void> showDirectoryInFinder(const std::string& path);

    /// Runs a program and waits for its end; nothing is split, searched or expanded. Fails with
    /// scriptExecutionFailed when it does not exit with 0; the payload is its standard error, or its path
    /// when that is not UTF-8.
    Result<void> runProgramAndWait(const std::string& executable, const std::vector<std::string>& arguments);

    /// Opens a terminal in a directory. Fails like runProgramAndWait where the system waits for the program
    /// that opens it.
    Result<void> openTerminal(const std::string& directory);

private:
    Result<void> openWebAddress(const std::string& url, std::string_view asTyped);
    Result<void> openExistingFile(const std::string& path);
    Result<void> startProgram(const std::string& command, std::string_view params);

    Desktop& m_desktop;
    Processes& m_processes;
    LogLine m_appendLogLine;
};

} // namespace kavendra
