#pragma once

#include "platform/Processes.h"

#include <string>
#include <vector>

namespace kavendra {

/// Starts nothing: records each call as "start " or "run " and the command line, arguments separated by "|".
/// A working directory and ": " come before the command line.
class RecordingProcesses : public Processes {
public:
    explicit RecordingProcesses(std::vector<std::string> environment = {})
        : Processes(std::move(environment)) {}

    Result<void> start(const std::string& executable, const std::vector<std::string>& arguments,
                       const std::string& workingDirectory = {}) override {
        const std::string prefix = workingDirectory.empty() ? "" : workingDirectory + ": ";
        calls.push_back("start " + prefix + commandLine(executable, arguments));
        return startResult;
    }

    Result<RunningProgram> run(const std::string& executable,
                               const std::vector<std::string>& arguments) override {
        calls.push_back("run " + commandLine(executable, arguments));
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
    static std::string commandLine(std::string text, const std::vector<std::string>& arguments) {
        for (const std::string& argument : arguments)
            text += "|" + argument;
        return text;
    }
};

} // namespace kavendra
