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

/// More than a pipe holds by default on any system: what a program that has ended may have left in it.
constexpr std::size_t maximumLeftInPipe = std::size_t{1} << 20;

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

Result<Pipe> makePipe(const std::string& forWhom) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return systemFailure(forWhom, errno);
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

/// Reads what there is, keeping no more than is wanted. Returns what read(2) does.
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

/// Takes in what comes from `errors` until `end` has something to say.
void readUntilEnd(std::string& text, const FileDescriptor& errors, const FileDescriptor& end) {
    std::array<pollfd, 2> sources{pollfd{errors.get(), POLLIN, 0}, pollfd{end.get(), POLLIN, 0}};
    while (sources[1].revents == 0) {
        if (poll(sources.data(), sources.size(), -1) < 0) {
            sources[1].revents = 0;
            if (errno == EINTR)
                continue;
            return;
        }
        if (sources[0].revents != 0 && readInto(text, errors) <= 0)
            sources[0].fd = -1; // closed by all who could write; poll passes over it
    }
}

/// Takes in what is left in the pipe, because a program's end may be heard of before its last words are, and
/// no more than that: somebody may go on writing.
void readRemainder(std::string& text, const FileDescriptor& errors) {
    fcntl(errors.get(), F_SETFL, O_NONBLOCK);
    std::size_t taken = 0;
    while (taken < maximumLeftInPipe) {
        const ssize_t count = readInto(text, errors);
        if (count <= 0)
            return;
        taken += static_cast<std::size_t>(count);
    }
}

int readStatus(const FileDescriptor& end) {
    int status = -1;
    while (read(end.get(), &status, sizeof status) < 0 && errno == EINTR)
        ;
    return status;
}

/// Returns which path a start with this errno failed on: the program's, unless its directory is at fault.
const std::string& failedPath(const std::string& executable, const std::string& workingDirectory) {
    const bool directoryIsUsable = workingDirectory.empty() || access(workingDirectory.c_str(), X_OK) == 0;
    return directoryIsUsable ? executable : workingDirectory;
}

} // namespace

Processes::Processes(std::vector<std::string> ofPrograms) : environment(std::move(ofPrograms)) {
    // An ignored signal is inherited from whoever started us, and then the system keeps no exit status.
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
    for (const std::string_view entry : environment)
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
                                      .environment = environment,
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
    Result<Pipe> errors = makePipe(executable);
    if (!errors)
        return std::unexpected(errors.error());
    Result<Pipe> end = makePipe(executable);
    if (!end)
        return std::unexpected(end.error());

    const auto reportEnd = std::make_shared<FileDescriptor>(std::move(end->writeEnd));
    const int failure = startAndReap({.executable = executable,
                                      .arguments = arguments,
                                      .environment = environment,
                                      .standardError = std::move(errors->writeEnd)},
                                     [reportEnd](int status) {
                                         // Four bytes into an empty pipe: neither blocks nor falls short.
                                         [[maybe_unused]] const ssize_t written =
                                             write(reportEnd->get(), &status, sizeof status);
                                     });
    if (failure != 0)
        return systemFailure(executable, failure);

    ProgramOutcome outcome;
    readUntilEnd(outcome.standardError, errors->readEnd, end->readEnd);
    readRemainder(outcome.standardError, errors->readEnd);
    const int status = readStatus(end->readEnd);
    outcome.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return outcome;
}

} // namespace kavendra
