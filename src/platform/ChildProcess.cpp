#include "platform/ChildProcess.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <future>
#include <system_error>
#include <thread>

namespace kavendra {

namespace {

/// The arguments of posix_spawn that need cleaning up. `failure` is the errno value of the first call that
/// failed.
struct SpawnOptions {
    explicit SpawnOptions(const ChildProcess& child) {
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_init(&actions);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        check(posix_spawnattr_setsigmask(&attributes, &none));
        check(posix_spawnattr_setsigdefault(&attributes, &all));
        check(posix_spawnattr_setflags(&attributes,
                                       POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
        if (child.standardError)
            check(posix_spawn_file_actions_adddup2(&actions, child.standardError.get(), STDERR_FILENO));
        if (!child.workingDirectory.empty())
            check(posix_spawn_file_actions_addchdir_np(&actions, child.workingDirectory.c_str()));
    }
    ~SpawnOptions() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnOptions(const SpawnOptions&) = delete;
    SpawnOptions& operator=(const SpawnOptions&) = delete;

    void check(int result) {
        if (failure == 0)
            failure = result;
    }

    int failure = 0;
    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t actions{};
};

/// Appends pointers to `texts`, followed by the null pointer that ends such a list.
void appendPointers(std::vector<char*>& pointers, const std::vector<std::string>& texts) {
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str())); // posix_spawn does not write to it
    pointers.push_back(nullptr);
}

/// Starts the program. Returns 0 and sets `process`, or returns an errno value.
int spawn(const ChildProcess& child, pid_t& process) {
    std::vector<char*> arguments{const_cast<char*>(child.executable.c_str())};
    appendPointers(arguments, child.arguments);
    std::vector<char*> environment;
    appendPointers(environment, child.environment);
    const SpawnOptions options(child);
    if (options.failure != 0)
        return options.failure;
    return posix_spawn(&process, child.executable.c_str(), &options.actions, &options.attributes,
                       arguments.data(), environment.data());
}

/// Waits for a child and returns its wait status, or that of a failed program if the status is not available.
int reap(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return EXIT_FAILURE << 8;
    return status;
}

} // namespace

// One thread for each child starts it and waits for it. A SIGCHLD handler or a wait for any child would also
// take the status of children that libraries wait for. The thread is created before the child, so that a
// failure to create it leaves no child that nobody waits for; `outcome` passes the result of the start to the
// caller.
int startAndReap(ChildProcess child, std::function<void(int status)> exited) {
    std::promise<int> outcome;
    std::future<int> started = outcome.get_future();
    try {
        std::thread([child = std::move(child), exited = std::move(exited),
                     outcome = std::move(outcome)]() mutable {
            pid_t process = 0;
            const int failure = spawn(child, process);
            child = {}; // closes this process's copy of its standard error
            outcome.set_value(failure);
            if (failure == 0)
                exited(reap(process));
        }).detach();
    } catch (const std::system_error& error) {
        return error.code().value();
    }
    return started.get();
}

} // namespace kavendra
