#pragma once

#include "base/Result.h"

#include <cstddef>
#include <future>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The result of a program that was waited for.
struct ProgramOutcome {
    bool succeeded = false;    ///< exited with status 0, not by a signal
    std::string standardError; ///< at most Processes::maximumStandardError bytes
};

/// A program that was started; ready when it has ended.
using RunningProgram = std::shared_future<ProgramOutcome>;

/// Starts programs. A program gets the environment passed to the constructor, nothing of this process's; a
/// new session, so that it outlives kavendra and its terminal; default signal handling; and only the
/// descriptors 0, 1 and 2. It is reaped when it ends. A path or an argument with a NUL byte fails with
/// EINVAL.
class Processes {
public:
    /// Bytes of standard error beyond this are dropped.
    static constexpr std::size_t maximumStandardError = std::size_t{16} << 20;

    /// `environment`: entries of the form NAME=value. Sets SIGCHLD to its default handling if it was ignored,
    /// because an exit status is lost otherwise.
    explicit Processes(std::vector<std::string> environment);
    virtual ~Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;

    /// Returns the current environment of this process.
    static std::vector<std::string> currentEnvironment();

    /// The environment that programs get.
    const std::vector<std::string>& programEnvironment() const { return m_environment; }

    /// Returns the value of a variable in that environment, empty when unset.
    std::string_view variable(std::string_view name) const;

    /// Starts a program in `workingDirectory` (that of this process when empty) without waiting for it.
    /// Standard input, output and error are inherited. `executable` is a path; PATH is not searched. The
    /// program gets `variables` (NAME=value) besides its environment, which has none of them. Fails with the
    /// system's reason when the program cannot be started.
    virtual Result<void> start(const std::string& executable, const std::vector<std::string>& arguments,
                               const std::string& workingDirectory = {},
                               const std::vector<std::string>& variables = {});

    /// Starts a program and collects its standard error until it exits; standard output is inherited. Does
    /// not wait for background processes of the program. Standard error is an unnamed temporary file, not a
    /// pipe, so that a program which outlives kavendra can go on writing. `variables` as with start. Fails
    /// with the system's reason when the program cannot be started.
    virtual Result<RunningProgram> run(const std::string& executable,
                                       const std::vector<std::string>& arguments,
                                       const std::vector<std::string>& variables = {});

    /// Runs a program until it exits. Fails as run does.
    Result<ProgramOutcome> runAndWait(const std::string& executable,
                                      const std::vector<std::string>& arguments);

private:
    std::vector<std::string> m_environment;
};

} // namespace kavendra
