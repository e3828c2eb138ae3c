#include "platform/Processes.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/ProcessTable.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iterator>
#include <set>
#include <sstream>

namespace kavendra {

namespace {

const std::string shell = "/bin/sh";
const std::vector<std::string> plainEnvironment{"PATH=/usr/bin:/bin", "LC_ALL=C"};

Result<ProgramOutcome> runScript(const std::string& script) {
    return Processes(plainEnvironment).runAndWait(shell, {"-c", script});
}

std::string standardErrorOf(const std::string& script) {
    const Result<ProgramOutcome> outcome = runScript(script);
    return outcome ? outcome->standardError : outcome.error().description;
}

std::set<std::string> inheritableDescriptors() {
    std::set<std::string> numbers;
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
        if (const int flags = fcntl(descriptor, F_GETFD); flags >= 0 && !(flags & FD_CLOEXEC))
            numbers.insert(std::to_string(descriptor));
    return numbers;
}

} // namespace

TEST(Processes, programGetsOnlyTheGivenEnvironmentAndIsDetached) {
    const TemporaryDirectory directory;
    const std::vector<std::string> environment{"B=2", "A=with = and \n line", "PATH=/usr/bin:/bin", "EMPTY="};
    setenv("ADDED_LATER", "1", 1);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    // Reads the status by built-ins, because the shell blocks signals while it starts another program.
    const auto started =
        Processes(environment)
            .start(shell,
                   {"-c", "while read -r line; do echo \"$line\"; done < /proc/$$/status > status;"
                          "cat /proc/$$/environ > environ; echo $$ > done"},
                   directory.path());
    std::signal(SIGPIPE, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ASSERT_TRUE(started);
    ASSERT_TRUE(eventually([&] { return directory.read("done").ends_with('\n'); }));

    std::string expected;
    for (const std::string& entry : environment)
        expected += entry + '\0';
    EXPECT_EQ(directory.read("environ"), expected);
    EXPECT_TRUE(isDetached(directory.read("status"))) << directory.read("status");
    const int process = std::atoi(directory.read("done").c_str());
    EXPECT_TRUE(eventually([&] { return kill(process, 0) != 0; })) << "the program was not reaped";
}

TEST(Processes, programInheritsOnlyStandardDescriptors) {
    const int ours = open("/dev/null", O_RDONLY | O_CLOEXEC);
    // The test -L excludes the descriptor with which the shell lists the directory.
    std::istringstream names(standardErrorOf(
        "for f in /proc/$$/fd/*; do [ -L $f ] && all=\"$all ${f##*/}\"; done; echo $all >&2"));
    close(ours);
    const std::set<std::string> descriptors{std::istream_iterator<std::string>(names), {}};
    EXPECT_EQ(descriptors, inheritableDescriptors());
}

TEST(Processes, awaitedProgramCanWriteErrorsAfterTheEndOfItsStarter) {
    const TemporaryDirectory directory;
    const pid_t starter = fork();
    if (starter == 0) {
        const std::string script = "cd " + directory.path() +
                                   "; while [ -d . ] && [ ! -e go ]; do sleep 0.05; done; " +
                                   "echo error >&2 && echo > survived";
        _exit(Processes(plainEnvironment).run(shell, {"-c", script}) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(starter, &status, 0), starter);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    directory.write("go", "");
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(directory.path("survived")); }));
}

TEST(Processes, errorOfAFailedStartHasThePathAndTheReason) {
    const TemporaryDirectory directory;
    const std::string noInterpreter = directory.writeProgram("no-interpreter", "#!/no/such/interpreter\n");
    const std::string notExecutable = directory.write("not-executable", "#!/bin/sh\n");
    const std::string missing = directory.path("missing");
    const std::string withNUL("/bin/true\0x", 11);

    struct Case {
        std::string executable;
        std::vector<std::string> arguments;
        std::string workingDirectory, failedPath;
        int errorNumber;
    };
    for (const Case& c : {
             Case{missing, {}, "", missing, ENOENT},
             Case{directory.path(), {}, "", directory.path(), EACCES},
             Case{noInterpreter, {}, "", noInterpreter, ENOENT},
             Case{notExecutable, {}, "", notExecutable, EACCES},
             Case{withNUL, {}, "", withNUL, EINVAL},
             Case{"/bin/true", {std::string("a\0b", 3)}, "", "/bin/true", EINVAL},
             Case{"/bin/true", {}, missing, missing, ENOENT},
             Case{"/bin/true", {}, withNUL, "/bin/true", EINVAL},
             Case{"/bin/true", {std::string(4 << 20, 'x')}, "", "/bin/true", E2BIG},
         }) {
        const std::string description = systemFailure(c.failedPath, c.errorNumber).error().description;
        SCOPED_TRACE(description);
        const auto started = Processes(plainEnvironment).start(c.executable, c.arguments, c.workingDirectory);
        EXPECT_EQ(started ? "no failure" : started.error().description, description);
        if (!c.workingDirectory.empty())
            continue;
        const auto run = Processes(plainEnvironment).runAndWait(c.executable, c.arguments);
        EXPECT_EQ(run ? "no failure" : run.error().description, description);
    }
    EXPECT_FALSE(hasZombieChild());
}

TEST(Processes, runAndWaitReturnsSuccessAndStandardError) {
    struct Case {
        const char* script;
        bool succeeded;
        const char* standardError;
    };
    for (const Case& c :
         {Case{"echo warning >&2", true, "warning\n"}, Case{"echo no >&2; exit 3", false, "no\n"},
          Case{"kill -KILL $$", false, ""}, Case{"exec 2>&-; sleep 0.1; exit 4", false, ""}}) {
        SCOPED_TRACE(c.script);
        const Result<ProgramOutcome> outcome = runScript(c.script);
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->succeeded, c.succeeded);
        EXPECT_EQ(outcome->standardError, c.standardError);
    }
    EXPECT_FALSE(hasZombieChild());
    EXPECT_EQ(standardErrorOf("yes line | head -c 1000000 >&2; exit 1").size(), 1'000'000U);
    EXPECT_EQ(standardErrorOf("head -c 20000000 /dev/zero >&2; exit 1").size(),
              Processes::maximumStandardError);
}

TEST(Processes, runAndWaitDoesNotWaitForBackgroundProcesses) {
    for (const char* background : {"sleep 60", "yes"}) {
        SCOPED_TRACE(background);
        const std::string text =
            standardErrorOf("echo first >&2; " + std::string(background) + " >&2 & echo $! >&2; exit 1");
        int process = 0;
        std::sscanf(text.substr(std::min(text.find_first_of("0123456789"), text.size())).c_str(), "%d",
                    &process);
        ASSERT_GT(process, 1) << text.substr(0, 100);
        EXPECT_EQ(kill(process, SIGKILL), 0) << "it has ended before runAndWait returned";
    }
}

TEST(Processes, runAndWaitIgnoresInterruptingSignals) {
    struct sigaction action{};
    struct sigaction before{};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before);
    const itimerval often{{0, 2000}, {0, 2000}};
    const itimerval never{};
    setitimer(ITIMER_REAL, &often, nullptr);
    const Result<ProgramOutcome> outcome = runScript("for i in 1 2 3; do sleep 0.1; echo $i >&2; done");
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    ASSERT_TRUE(outcome);
    EXPECT_TRUE(outcome->succeeded);
    EXPECT_EQ(outcome->standardError, "1\n2\n3\n");
}

TEST(Processes, exitStatusIsKnownWhenSIGCHLDWasIgnored) {
    std::signal(SIGCHLD, SIG_IGN);
    const Result<ProgramOutcome> outcome = runScript("exit 0");
    std::signal(SIGCHLD, SIG_DFL);
    EXPECT_TRUE(outcome && outcome->succeeded);
}

} // namespace kavendra
