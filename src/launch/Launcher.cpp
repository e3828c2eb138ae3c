#include "launch/Launcher.h"

#include "base/Text.h"
#include "base/TextDecoding.h"
#include "launch/LaunchErrors.h"
#include "launch/Params.h"
#include "launch/WebAddress.h"
#include "platform/ExecutableSearch.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <utility>

namespace kavendra {

namespace {

/// Returns the kind when the launch went well.
Result<std::string_view> outcome(std::string_view kind, const Result<void>& launched) {
    if (!launched)
        return std::unexpected(launched.error());
    return kind;
}

/// Fails with the words of a program that did not succeed, with `name` when they cannot be read.
Result<void> success(const ProgramOutcome& end, const std::string& name) {
    if (end.succeeded)
        return {};
    const std::string& words = end.standardError;
    return LaunchError::scriptExecutionFailed(isValidUTF8(words) ? trimmed(words) : std::string_view(name));
}

} // namespace

Launcher::Launcher(Desktop& systemDesktop, Processes& starter, LogLine logLine)
    : desktop(systemDesktop), processes(starter), appendLogLine(std::move(logLine)) {}

Result<std::string_view> Launcher::launch(const LaunchItem& item) {
    const std::string_view command = trimmed(item.command);
    const std::string_view params = trimmed(item.params);
    const std::string commandPath = expandedPath(command);

    if (const auto url = webAddressOf(params); url && isApplicationBundle(commandPath))
        return outcome(launchKind::specificBrowser, openWebAddressWithApplication(*url, commandPath));
    if (const auto url = webAddressOf(command))
        return outcome(launchKind::url, openWebAddress(*url, command));
    if (params.empty() && isDirectory(commandPath))
        return outcome(launchKind::finder, showDirectoryInFinder(commandPath));
    if (params.empty() && exists(commandPath))
        return outcome(launchKind::defaultApp, openExistingFile(commandPath));
    return outcome(params.empty() ? launchKind::command : launchKind::commandWithParams,
                   runCommand(commandPath, params));
}

bool Launcher::isApplicationBundle(const std::string& path) {
    return desktop.isApplication(path);
}

Result<void> Launcher::openWebAddressWithApplication(const std::string& url,
                                                     const std::string& applicationPath) {
    if (!exists(applicationPath) && !isApplicationBundle(applicationPath))
        return LaunchError::applicationNotFound(applicationPath);
    if (!desktop.openURLWithApplication(url, applicationPath))
        appendLogLine("Failed to open URL with application: " + applicationPath);
    return {};
}

Result<void> Launcher::openWebAddress(const std::string& url, std::string_view asTyped) {
    if (!desktop.openURL(url))
        return LaunchError::invalidURL(asTyped);
    return {};
}

Result<void> Launcher::openExistingFile(const std::string& path) {
    if (!desktop.openFile(path))
        return LaunchError::commandNotFound(path);
    return {};
}

Result<void> Launcher::showDirectoryInFinder(const std::string& path) {
    if (!desktop.showDirectory(path))
        return LaunchError::failedToOpenInFinder(path);
    return {};
}

Result<void> Launcher::runCommand(const std::string& command, std::string_view params) {
    const auto executable = resolveExecutable(command, processes.variable("PATH"));
    if (!executable)
        return LaunchError::commandNotFound(command);
    auto arguments = splitParams(params);
    if (!arguments)
        return std::unexpected(std::move(arguments.error()));
    for (std::string& argument : *arguments)
        argument = expandedPath(argument);
    return processes.start(*executable, *arguments);
}

Result<void> Launcher::runProgramAndWait(const std::string& executable,
                                         const std::vector<std::string>& arguments) {
    const Result<ProgramOutcome> end = processes.runAndWait(executable, arguments);
    if (!end)
        return std::unexpected(end.error());
    return success(*end, executable);
}

Result<void> Launcher::openTerminal(const std::string& directory) {
    const Result<ProgramOutcome> end = desktop.openTerminal(directory);
    if (!end)
        return std::unexpected(end.error());
    return success(*end, directory);
}

} // namespace kavendra
