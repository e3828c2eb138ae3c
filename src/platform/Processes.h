#pragma once

#include "base/Result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// How a program that was waited for ended.
struct ProgramOutcome {
    bool succeeded = false;    ///< it exited with status 0; one that a signal ended has not
    std::string standardError; ///< what it wrote there, at most Processes::maximumStandardError bytes
};

/// Starts programs. Every program gets exactly the environment that was given at construction, which is the
/// one that kavendra itself was started with; a session of its own, so that it outlives kavendra and its
/// terminal; default signal handling; and none of kavendra's descriptors but 0, 1 and 2. It is reaped when it
/// ends. A path or an argument that holds a NUL byte is refused with EINVAL.
class Processes {
public:
    /// More than this is read from a program's standard error, so that it can go on, but not kept.
    static constexpr std::size_t maximumStandardError = std::size_t{16} << 20;

    /// `ofPrograms`: the environment, entries of the form NAME=value. Makes the process notice its children's
    /// ends, should it have been started with SIGCHLD ignored.
    explicit Processes(std::vector<std::string> ofPrograms);
    virtual ~Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;

    /// Returns the process's own environment as it stands now.
    static std::vector<std::string> currentEnvironment();

    /// The environment that programs get.
    const std::vector<std::string>& programEnvironment() const { return environment; }

    /// Returns the value of an environment variable that programs will see, empty when unset.
    std::string_view variable(std::string_view name) const;

    /// Starts a program in `workingDirectory` (kavendra's own when empty) and returns at once. Standard
    /// input, output and error are inherited. `executable` is a path; no search is made. Fails with the
    /// system's reason when the program cannot be started.
    virtual Result<void> start(const std::string& executable, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory = {});

    /// Runs a program until it exits, taking its standard error in meanwhile; standard output is inherited.
    /// What the program leaves running behind it is not waited for, even when it holds standard error open.
    /// Fails only when the program cannot be started.
    virtual Result<ProgramOutcome> runAndWait(const std::string& executable,
                                              const std::vector<std::string>& arguments);

private:
    std::vector<std::string> environment;
};

} // namespace kavendra
