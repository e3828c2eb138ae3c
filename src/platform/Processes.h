#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// How a program that was waited for ended.
struct ProgramOutcome {
    bool succeeded = false;    ///< it exited with status 0
    std::string standardError; ///< all that it wrote there
};

/// Starts programs. Every program gets the environment that was given at construction, which is the one that
/// kavendra itself was started with, and is reaped when it ends.
class Processes {
public:
    /// `environment`: entries of the form NAME=value.
    explicit Processes(std::vector<std::string> environment);
    virtual ~Processes() = default;

    /// Returns the process's own environment as it stands now.
    static std::vector<std::string> currentEnvironment();

    /// Returns the value of an environment variable that programs will see, empty when unset.
    std::string_view variable(std::string_view name) const;

    /// Starts a program in a session of its own, in `workingDirectory` unless that is empty, and returns at
    /// once. Standard input, output and error are inherited. The program outlives kavendra.
    /// Fails with the system's reason when the program cannot be started.
    virtual Result<void> start(const std::string& executable, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory = {});

    /// Runs a program until it exits, taking its standard error in meanwhile; standard output is inherited.
    /// What the program leaves running behind it is not waited for. Fails only when it cannot be started.
    virtual Result<ProgramOutcome> runAndWait(const std::string& executable,
                                              const std::vector<std::string>& arguments);

private:
    std::vector<std::string> environment;
};

} // namespace kavendra
