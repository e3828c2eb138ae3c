#pragma once

#include "base/LogLine.h"
#include "base/Result.h"
#include "data/LaunchItem.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The road that a launch took, in the words that the status line shows.
namespace launchKind {
inline constexpr std::string_view specificBrowser = "specific browser";
inline constexpr std::string_view url = "url";
inline constexpr std::string_view finder = "finder";
inline constexpr std::string_view defaultApp = "default app";
inline constexpr std::string_view command = "command";
inline constexpr std::string_view commandWithParams = "command + params";
} // namespace launchKind

/// Launches items: decides what a row's command and params mean, and has the desktop or the system do it.
/// Fails with a LaunchError, or with the system's error when a program cannot be started.
class Launcher {
public:
    /// `systemDesktop` and `starter` must outlive this. `logLine` gets what fails after a launch counted as
    /// done.
    Launcher(Desktop& systemDesktop, Processes& starter, LogLine logLine);

    /// Launches an item by the first of these that holds, and returns its launchKind: params are a web
    /// address and the command is an application; the command is a web address; params are empty and the
    /// command is an existing directory, or an existing file; the command is a program.
    Result<std::string_view> launch(const LaunchItem& item);

    bool isApplicationBundle(const std::string& path);

    /// Fails with applicationNotFound when there is no such application. That the application could not be
    /// started is only logged.
    Result<void> openWebAddressWithApplication(const std::string& url, const std::string& applicationPath);

    /// Shows a directory in the file manager. Fails with failedToOpenInFinder.
    Result<void> showDirectoryInFinder(const std::string& path);

    /// Starts a program and returns at once. `command` is a name or a path (see resolveExecutable), `params`
    /// are split (see splitParams) and a tilde in front of each is expanded.
    /// Fails with commandNotFound, unterminatedQuote or the system's error.
    Result<void> runCommand(const std::string& command, std::string_view params);

    /// Runs a program to its end; nothing is split, searched or expanded. Fails with the system's error when
    /// it cannot be started, with scriptExecutionFailed when it does not exit with 0; the payload is what it
    /// wrote to standard error, or its path when that is not UTF-8.
    Result<void> runProgramAndWait(const std::string& executable, const std::vector<std::string>& arguments);

    /// Opens a terminal of the system in a directory. Fails like runProgramAndWait, as far as the system
    /// waits for what opens it.
    Result<void> openTerminal(const std::string& directory);

private:
    Result<void> openExistingFile(const std::string& path);
    Result<void> openWebAddress(const std::string& url, std::string_view asTyped);

    Desktop& desktop;
    Processes& processes;
    LogLine appendLogLine;
};

} // namespace kavendra
