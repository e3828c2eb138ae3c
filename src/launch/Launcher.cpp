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

/// Fails with the standard error of a program that did not succeed, with `name` when that is not UTF-8.
Result<void> successOf(const ProgramOutcome& outcome, const std::string& name) {
    if (outcome.succeeded)
        return {};
    const std::string& text = outcome.standardError;
    return LaunchError::scriptExecutionFailed(isValidUTF8(text) ? trimmed(text) : std::string_view(name));
}

/// Splits params into tokens (see splitParams), each expanded as a path.
Result<std::vector<std::string>> expandedTokens(std::string_view params) {
    auto tokens = splitParams(params);
    if (tokens)
        for (std::string& token : *tokens)
            token = expandedPath(token);
    return tokens;
}

} // namespace

ActionOutcome outcomeOf(const Result<void>& done, std::string message) {
    if (!done)
        return std::unexpected(done.error());
    return message;
}

ActionOutcome outcomeOfProgram(const ActionSuccess& action) {
    return outcomeOf(successOf(action.program.get(), action.programPath), action.message);
}

Launcher::Launcher(Desktop& desktop, Processes& processes, LogLine appendLogLine)
    : m_desktop(desktop), m_processes(processes), m_appendLogLine(std::move(appendLogLine)) {}

ActionOutcome Launcher::launch(const LaunchItem& item) {
    const std::string_view command = trimmed(item.command);
    const std::string_view params = trimmed(item.params);
    const std::string path = expandedPath(command);
    const auto launched = [&item](const Result<void>& done, const std::string& kind) {
        return outcomeOf(done, "Launched (" + kind + "): " + item.title);
    };

    if (const auto url = webAddressOf(params); url && m_desktop.isApplication(path))
        return launched(openWebAddressWithApplication(*url, path), "specific browser");
    if (const auto url = webAddressOf(command))
        return launched(openWebAddress(*url, command), "url");
    if (const auto documents = expandedTokens(params);
        documents && m_desktop.canStartApplication(path, *documents))
        return launched(startApplication(path, *documents), "default app");
    if (params.empty() && isDirectory(path))
        return launched(showDirectoryInFinder(path), "finder");
    if (params.empty() && exists(path))
        return launched(openExistingFile(path), "default app");
    return launched(startProgram(path, params), params.empty() ? "command" : "command + params");
}

Result<void> Launcher::openWebAddressWithApplication(const std::string& url,
                                                     const std::string& applicationPath) {
    if (!m_desktop.isApplication(applicationPath))
        return LaunchError::applicationNotFound(applicationPath);
    if (!m_desktop.openURLWithApplication(url, applicationPath))
        m_appendLogLine("Failed to open URL with application: " + applicationPath);
    return {};
}

Result<void> Launcher::openWebAddress(const std::string& url, std::string_view asTyped) {
    if (!m_desktop.openURL(url))
        return LaunchError::invalidURL(asTyped);
    return {};
}

Result<void> Launcher::startApplication(const std::string& path, const std::vector<std::string>& documents) {
    if (!m_desktop.startApplication(path, documents))
        return LaunchError::commandNotFound(path);
    return {};
}

Result<void> Launcher::openExistingFile(const std::string& path) {
    if (!m_desktop.openFile(path))
        return LaunchError::commandNotFound(path);
    return {};
}

Result<void> Launcher::showDirectoryInFinder(const std::string& path) {
    if (!m_desktop.showDirectory(path))
        return LaunchError::failedToOpenInFinder(path);
    return {};
}

Result<void> Launcher::startProgram(const std::string& command, std::string_view params) {
    const auto executable = resolveExecutable(command, m_processes.variable("PATH"));
    if (!executable)
        return LaunchError::commandNotFound(command);
    const auto arguments = expandedTokens(params);
    if (!arguments)
        return std::unexpected(arguments.error());
    return m_processes.start(*executable, *arguments, {}, m_desktop.activationEnvironment());
}

ActionOutcome Launcher::runProgram(const std::string& executable, const std::vector<std::string>& arguments,
                                   std::string message) {
    Result<RunningProgram> program =
        m_processes.run(executable, arguments, m_desktop.activationEnvironment());
    if (!program)
        return std::unexpected(std::move(program.error()));
    ActionSuccess started(std::move(message));
    started.program = std::move(*program);
    started.programPath = executable;
    return started;
}

Result<void> Launcher::openTerminal(const std::string& directory) {
    const Result<ProgramOutcome> outcome = m_desktop.openTerminal(directory);
    return outcome ? successOf(*outcome, directory) : std::unexpected(outcome.error());
}

} // namespace kavendra
