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

/// The attributes and file actions of one posix_spawn. The first failure is kept.
class SpawnOptions {
public:
    explicit SpawnOptions(const ChildProcess& child) {
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_init(&actions);
        setSessionAndSignals();
        if (child.standardError)
            note(posix_spawn_file_actions_adddup2(&actions, child.standardError.get(), STDERR_FILENO));
        if (!child.workingDirectory.empty())
            note(posix_spawn_file_actions_addchdir_np(&actions, child.workingDirectory.c_str()));
    }
    ~SpawnOptions() {
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }
    SpawnOptions(const SpawnOptions&) = delete;
    SpawnOptions& operator=(const SpawnOptions&) = delete;

    int failure = 0;
    posix_spawnattr_t attributes{};
    posix_spawn_file_actions_t actions{};

private:
    void setSessionAndSignals() {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        note(posix_spawnattr_setsigmask(&attributes, &none));
        note(posix_spawnattr_setsigdefault(&attributes, &all));
        note(posix_spawnattr_setflags(&attributes,
                                      POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    }

    void note(int result) {
        if (failure == 0)
            failure = result;
    }
};

char* pointerTo(const std::string& text) {
    return const_cast<char*>(text.c_str()); // posix_spawn does not write to it
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 2);
    for (const std::string& text : texts)
        pointers.push_back(pointerTo(text));
    pointers.push_back(nullptr);
    return pointers;
}

int spawn(const ChildProcess& child, pid_t& process) {
    std::vector<char*> arguments = pointersTo(child.arguments);
    arguments.insert(arguments.begin(), pointerTo(child.executable));
    const std::vector<char*> environment = pointersTo(child.environment);
    const SpawnOptions options(child);
    if (options.failure != 0)
        return options.failure;
    return posix_spawn(&process, child.executable.c_str(), &options.actions, &options.attributes,
                       arguments.data(), environment.data());
}

/// Returns the wait status of a child, or one that is no success when somebody else has taken it.
int reap(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            return EXIT_FAILURE << 8;
    return status;
}

} // namespace

// A thread a child, because all else that leaves no zombie belongs to the whole process: a handler of SIGCHLD
// or a wait for any child would take the ends of children that the libraries wait for themselves. The thread
// starts the child too, so that none can run without the one who waits for it.
int startAndReap(ChildProcess child, std::function<void(int status)> ended) {
    std::promise<int> outcome;
    std::future<int> started = outcome.get_future();
    try {
        std::thread([child = std::move(child), ended = std::move(ended),
                     outcome = std::move(outcome)]() mutable {
            pid_t process = 0;
            const int failure = spawn(child, process);
            child = {}; // closes our end of its standard error
            outcome.set_value(failure);
            if (failure == 0)
                ended(reap(process));
        }).detach();
    } catch (const std::system_error& error) {
        return error.code().value();
    }
    return started.get();
}

} // namespace kavendra
