#pragma once

#include "platform/Processes.h"

#include <string>
#include <vector>

namespace kavendra {

/// Starts nothing: records each call as "start " or "run " and the command line, arguments separated by "|".
/// A working directory and ": ", then added variables, each with a space, come before the command line.
class RecordingProcesses : public Processes {
public:
    explicit RecordingProcesses(std::vector<std::string> environment = {})
        : Processes(std::move(environment)) {}

    Result<void> start(const std::string& executable, const std::vector<std::string>& arguments,
                       const std::string& workingDirectory = {},
                       const std::vector<std::string>& variables = {}) override {
        const std::string prefix = workingDirectory.empty() ? "" : workingDirectory + ": ";
        calls.push_back("start " + prefix + commandLine(joined(variables) + executable, arguments));
        return startResult;
    }

    Result<RunningProgram> run(const std::string& executable, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& variables = {}) override {
        calls.push_back("run " + commandLine(joined(variables) + executable, arguments));
        if (!runResult)
            return std::unexpected(runResult.error());
        std::promise<ProgramOutcome> outcome;
        outcome.set_value(*runResult);
        return outcome.get_future().share();
    }

    std::vector<std::string> calls;
    Result<void> startResult;
    Result<ProgramOutcome> runResult = ProgramOutcome{.succeeded = true, .standardError = {}};

private:
    static std::string joined(const std::vector<std::string>& variables) {
        std::string text;
        for (const std::string& variable : variables)
            text += variable + " ";
        return text;
    }

    static std::string commandLine(std::string text, const std::vector<std::string>& arguments) {
        for (const std::string& argument : arguments)
            text += "|" + argument;
        return text;
    }
};

} // namespace kavendra
