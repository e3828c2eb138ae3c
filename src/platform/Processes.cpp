#include "platform/Processes.h"

#include "platform/ChildProcess.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <memory>

extern char** environ;

namespace kavendra {

namespace {

/// Returns the beginning of a file, at most maximumStandardError bytes.
std::string textOf(const FileDescriptor& file) {
    std::string text;
    std::array<char, std::size_t{64} << 10> buffer; // not initialised: pread fills it
    while (text.size() < Processes::maximumStandardError) {
        const std::size_t room = std::min(buffer.size(), Processes::maximumStandardError - text.size());
        const ssize_t count = pread(file.get(), buffer.data(), room, static_cast<off_t>(text.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

/// Returns the path that an error text should name: the program, or its working directory if that is not
/// usable.
const std::string& failedPath(const std::string& executable, const std::string& workingDirectory) {
    const bool directoryIsUsable = workingDirectory.empty() || access(workingDirectory.c_str(), X_OK) == 0;
    return directoryIsUsable ? executable : workingDirectory;
}

std::vector<std::string> joined(std::vector<std::string> entries, const std::vector<std::string>& more) {
    entries.insert(entries.end(), more.begin(), more.end());
    return entries;
}

} // namespace

Processes::Processes(std::vector<std::string> environment) : m_environment(std::move(environment)) {
    // A parent process may have ignored the signal, and the system keeps no exit status then.
    struct sigaction current{};
    if (sigaction(SIGCHLD, nullptr, &current) == 0 && current.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

std::vector<std::string> Processes::currentEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; entry && *entry; ++entry)
        entries.emplace_back(*entry);
    return entries;
}

std::string_view Processes::variable(std::string_view name) const {
    for (const std::string_view entry : m_environment)
        if (entry.size() > name.size() && entry.starts_with(name) && entry[name.size()] == '=')
            return entry.substr(name.size() + 1);
    return {};
}

Result<void> Processes::start(const std::string& executable, const std::vector<std::string>& arguments,
                              const std::string& workingDirectory,
                              const std::vector<std::string>& variables) {
    if (containsNUL(executable) || containsNUL(workingDirectory) ||
        std::ranges::any_of(arguments, containsNUL))
        return systemFailure(executable, EINVAL);
    const int failure = startAndReap({.executable = executable,
                                      .arguments = arguments,
                                      .environment = joined(m_environment, variables),
                                      .workingDirectory = workingDirectory},
                                     [](int /*status*/) {});
    if (failure != 0)
        return systemFailure(failedPath(executable, workingDirectory), failure);
    return {};
}

Result<RunningProgram> Processes::run(const std::string& executable,
                                      const std::vector<std::string>& arguments,
                                      const std::vector<std::string>& variables) {
    if (containsNUL(executable) || std::ranges::any_of(arguments, containsNUL))
        return systemFailure(executable, EINVAL);
    Result<FileDescriptor> file = unnamedTemporaryFile();
    if (!file)
        return std::unexpected(std::move(file.error()));
    FileDescriptor written(fcntl(file->get(), F_DUPFD_CLOEXEC, 0));
    if (!written)
        return systemFailure(executable, errno);

    struct Run {
        FileDescriptor standardError;
        std::promise<ProgramOutcome> outcome;
    };
    const auto run = std::make_shared<Run>(std::move(*file), std::promise<ProgramOutcome>());
    RunningProgram program = run->outcome.get_future().share();
    const int failure =
        startAndReap({.executable = executable,
                      .arguments = arguments,
                      .environment = joined(m_environment, variables),
                      .standardError = std::move(written)},
                     [run](int status) {
                         run->outcome.set_value({.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0,
                                                 .standardError = textOf(run->standardError)});
                     });
    if (failure != 0)
        return systemFailure(executable, failure);
    return program;
}

Result<ProgramOutcome> Processes::runAndWait(const std::string& executable,
                                             const std::vector<std::string>& arguments) {
    const Result<RunningProgram> program = run(executable, arguments);
    if (!program)
        return std::unexpected(program.error());
    return program->get();
}

} // namespace kavendra
