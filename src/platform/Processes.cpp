#include "platform/Processes.h"

#include "platform/ChildProcess.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <poll.h>
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

constexpr std::size_t readSize = std::size_t{64} << 10;

/// How much to read after the program has ended; more than a pipe holds by default on any system.
constexpr std::size_t maximumRemainder = std::size_t{1} << 20;

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

/// `path` is for the error text.
Result<Pipe> makePipe(const std::string& path) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return systemFailure(path, errno);
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// Reads once and appends what fits below maximumStandardError. Returns what read(2) returns.
ssize_t readInto(std::string& text, const FileDescriptor& file) {
    std::array<char, readSize> buffer; // not initialised: read fills it
    ssize_t count = 0;
    do
        count = read(file.get(), buffer.data(), buffer.size());
    while (count < 0 && errno == EINTR);
    if (count > 0)
        text.append(buffer.data(),
                    std::min(static_cast<std::size_t>(count), Processes::maximumStandardError - text.size()));
    return count;
}

/// Reads `standardError` into `text` until `exitStatus` has data: the program's exit ends the wait, not the
/// end of its standard error, which background processes may keep open.
void readUntilExit(std::string& text, const FileDescriptor& standardError, const FileDescriptor& exitStatus) {
    std::array<pollfd, 2> sources{pollfd{standardError.get(), POLLIN, 0},
                                  pollfd{exitStatus.get(), POLLIN, 0}};
    while (sources[1].revents == 0) {
        if (poll(sources.data(), sources.size(), -1) < 0) {
            sources[1].revents = 0;
            if (errno == EINTR)
                continue;
            return;
        }
        if (sources[0].revents != 0 && readInto(text, standardError) <= 0)
            sources[0].fd = -1; // end of file; poll ignores negative descriptors
    }
}

/// Reads what is left in the pipe, because the exit may be reported before standard error is drained. The
/// amount is limited: a background process may write without end.
void readRemainder(std::string& text, const FileDescriptor& standardError) {
    fcntl(standardError.get(), F_SETFL, O_NONBLOCK);
    std::size_t taken = 0;
    while (taken < maximumRemainder) {
        const ssize_t count = readInto(text, standardError);
        if (count <= 0)
            return;
        taken += static_cast<std::size_t>(count);
    }
}

int readStatus(const FileDescriptor& exitStatus) {
    int status = -1;
    while (read(exitStatus.get(), &status, sizeof status) < 0 && errno == EINTR)
        ;
    return status;
}

/// Returns the path that an error text should name: the program, or its working directory if that is not
/// usable.
const std::string& failedPath(const std::string& executable, const std::string& workingDirectory) {
    const bool directoryIsUsable = workingDirectory.empty() || access(workingDirectory.c_str(), X_OK) == 0;
    return directoryIsUsable ? executable : workingDirectory;
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
                              const std::string& workingDirectory) {
    if (containsNUL(executable) || containsNUL(workingDirectory) ||
        std::ranges::any_of(arguments, containsNUL))
        return systemFailure(executable, EINVAL);
    const int failure = startAndReap({.executable = executable,
                                      .arguments = arguments,
                                      .environment = m_environment,
                                      .workingDirectory = workingDirectory},
                                     [](int /*status*/) {});
    if (failure != 0)
        return systemFailure(failedPath(executable, workingDirectory), failure);
    return {};
}

Result<ProgramOutcome> Processes::runAndWait(const std::string& executable,
                                             const std::vector<std::string>& arguments) {
    if (containsNUL(executable) || std::ranges::any_of(arguments, containsNUL))
        return systemFailure(executable, EINVAL);
    Result<Pipe> standardError = makePipe(executable);
    if (!standardError)
        return std::unexpected(standardError.error());
    Result<Pipe> exitStatus = makePipe(executable);
    if (!exitStatus)
        return std::unexpected(exitStatus.error());

    const auto statusWriter = std::make_shared<FileDescriptor>(std::move(exitStatus->writeEnd));
    const int failure = startAndReap({.executable = executable,
                                      .arguments = arguments,
                                      .environment = m_environment,
                                      .standardError = std::move(standardError->writeEnd)},
                                     [statusWriter](int status) {
                                         // Four bytes into an empty pipe: written at once and completely.
                                         [[maybe_unused]] const ssize_t written =
                                             write(statusWriter->get(), &status, sizeof status);
                                     });
    if (failure != 0)
        return systemFailure(executable, failure);

    ProgramOutcome outcome;
    readUntilExit(outcome.standardError, standardError->readEnd, exitStatus->readEnd);
    readRemainder(outcome.standardError, standardError->readEnd);
    const int status = readStatus(exitStatus->readEnd);
    outcome.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return outcome;
}

} // namespace kavendra
