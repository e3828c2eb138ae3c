#pragma once

#include "base/Result.h"
#include "data/LaunchItem.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavendra {

/// An action that a person chose and that did not fail.
struct ActionSuccess {
    ActionSuccess(const char* message) : message(message) {}
    ActionSuccess(std::string message) : message(std::move(message)) {}

    std::string message; ///< for the status line, also when there was nothing to act on
    /// The program whose success the message reports; invalid when there is none.
    RunningProgram program = {};
    std::string programPath = {};
};

/// How an action ended, or the failure to report.
using ActionOutcome = Result<ActionSuccess>;

/// Waits for the program of an action. Returns the message, or scriptExecutionFailed when the program did not
/// exit with 0; the payload is its standard error, or its path when that is not UTF-8.
ActionOutcome outcomeOfProgram(const ActionSuccess& action);

/// Returns `message` when `done` succeeded, else its failure.
ActionOutcome outcomeOf(const Result<void>& done, std::string message);

/// Receives one line for the log; never fails.
using LogLine = std::function<void(std::string_view)>;

/// Launches items and opens what they name. Failures are those of LaunchErrors.h, or the system's error when
/// a program cannot be started. The functions may be called on any thread, at the same time; they wait for
/// file systems and for the desktop.
class Launcher {
public:
    /// `desktop` and `processes` must outlive this. `appendLogLine` gets the failures that are only logged.
    Launcher(Desktop& desktop, Processes& processes, LogLine appendLogLine);

    /// Launches an item by the first rule that applies: params are a web address and the command is an
    /// application; the command is a web address; the command is an application that opens what the params
    /// name; params are empty and the command is an existing directory, or an existing file; the command is a
    /// program. Returns "Launched (<kind>): <title>".
    ActionOutcome launch(const LaunchItem& item);

    /// Fails with applicationNotFound when there is no such application. A failure of the application itself
    /// is only logged.
    Result<void> openWebAddressWithApplication(const std::string& url, const std::string& applicationPath);

    /// Shows a directory in the file manager. Fails with failedToOpenInFinder.
    Result<void> showDirectoryInFinder(const std::string& path);

    /// Starts a program that is to be waited for, see outcomeOfProgram; nothing is split, searched or
    /// expanded. `message` reports its success.
    ActionOutcome runProgram(const std::string& executable, const std::vector<std::string>& arguments,
                             std::string message);

    /// Opens a terminal in a directory. Fails with scriptExecutionFailed where the system waits for the
    /// program that opens it and that fails.
    Result<void> openTerminal(const std::string& directory);

private:
    Result<void> openWebAddress(const std::string& url, std::string_view asTyped);
    Result<void> startApplication(const std::string& path, const std::vector<std::string>& documents);
    Result<void> openExistingFile(const std::string& path);
    Result<void> startProgram(const std::string& command, std::string_view params);

    Desktop& m_desktop;
    Processes& m_processes;
    LogLine m_appendLogLine;
};

} // namespace kavendra
