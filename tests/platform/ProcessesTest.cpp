#include "platform/Processes.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/ProcessTable.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iterator>
#include <set>
#include <sstream>

namespace kavendra {

namespace {

using namespace std::chrono_literals;

const std::string shell = "/bin/sh";
const std::vector<std::string> plainEnvironment{"PATH=/usr/bin:/bin", "LC_ALL=C"};

Result<ProgramOutcome> runScript(const std::string& script) {
    return Processes(plainEnvironment).runAndWait(shell, {"-c", script});
}

/// Returns what the script wrote to standard error.
std::string wordsOf(const std::string& script) {
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

/// Ends a process that a script left running and whose id it wrote into a file.
void endProcess(const std::string& processID) {
    const int process = std::atoi(processID.c_str());
    ASSERT_GT(process, 1);
    EXPECT_EQ(kill(process, SIGKILL), 0);
}

} // namespace

TEST(Processes, givesAProgramItsEnvironmentASessionAndNothingElse) {
    const TemporaryDirectory directory;
    const std::vector<std::string> environment{"B=2", "A=with = and \n line", "PATH=/usr/bin:/bin", "EMPTY="};
    setenv("ADDED_LATER", "1", 1);
    ASSERT_TRUE(Processes(environment)
                    .start(shell,
                           {"-c", "cat /proc/$$/environ > environ; cat /proc/$$/stat > stat; echo $$ > done"},
                           directory.path()));
    ASSERT_TRUE(eventually([&] { return directory.read("done").ends_with('\n'); }));

    std::string expected;
    for (const std::string& entry : environment)
        expected += entry + '\0';
    EXPECT_EQ(directory.read("environ"), expected);
    const int process = std::atoi(directory.read("done").c_str());
    EXPECT_EQ(sessionOfProcess(directory.read("stat")), process);
    EXPECT_NE(getsid(0), process);
    EXPECT_TRUE(eventually([&] { return kill(process, 0) != 0; })) << "the ended program was not reaped";
    EXPECT_FALSE(hasZombieChild());
}

TEST(Processes, givesAProgramNoneOfOurDescriptors) {
    const int ours = open("/dev/null", O_RDONLY | O_CLOEXEC);
    // The shell has opened the directory itself while it listed it, hence the second look.
    std::istringstream names(
        wordsOf("for f in /proc/$$/fd/*; do [ -L $f ] && all=\"$all ${f##*/}\"; done; echo $all >&2"));
    close(ours);
    const std::set<std::string> descriptors{std::istream_iterator<std::string>(names), {}};
    EXPECT_EQ(descriptors, inheritableDescriptors());
}

TEST(Processes, givesAProgramDefaultSignalHandling) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    // In the shell's own words, because it blocks signals itself while it starts another program.
    const std::string status = wordsOf("while read -r line; do echo \"$line\" >&2; done < /proc/$$/status");
    std::signal(SIGPIPE, handler);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_TRUE(handlesSignalsByDefault(status)) << status;
}

TEST(Processes, theProgramOutlivesWhoStartedIt) {
    const TemporaryDirectory directory;
    const pid_t starter = fork();
    if (starter == 0) {
        setpgid(0, 0);
        const bool started = Processes(plainEnvironment)
                                 .start(shell, {"-c", "sleep 0.3; echo > survived"}, directory.path())
                                 .has_value();
        kill(started ? 0 : getpid(), started ? SIGKILL : SIGTERM); // all of the group, as a terminal would
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(starter, &status, 0), starter);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_FALSE(std::filesystem::exists(directory.path("survived")));
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(directory.path("survived")); }));
}

TEST(Processes, reportsAFailedStartWithThePathAndTheReason) {
    const TemporaryDirectory directory;
    const std::string noInterpreter = directory.write("no-interpreter", "#!/no/such/interpreter\n");
    const std::string notAProgram = directory.write("not-a-program", "hello");
    const std::string notExecutable = directory.write("not-executable", "#!/bin/sh\n");
    for (const std::string& path : {noInterpreter, notAProgram})
        chmod(path.c_str(), 0755);
    const std::string missing = directory.path("missing");
    const std::string withNUL("/bin/true\0x", 11);

    struct Case {
        std::string executable;
        std::vector<std::string> arguments;
        std::string workingDirectory, description;
    };
    for (const Case& c : {
             Case{missing, {}, "", missing + ": No such file or directory"},
             Case{directory.path(), {}, "", directory.path() + ": Permission denied"},
             Case{noInterpreter, {}, "", noInterpreter + ": No such file or directory"},
             Case{notAProgram, {}, "", notAProgram + ": Exec format error"},
             Case{notExecutable, {}, "", notExecutable + ": Permission denied"},
             Case{withNUL, {}, "", withNUL + ": Invalid argument"},
             Case{"/bin/true", {std::string("a\0b", 3)}, "", "/bin/true: Invalid argument"},
             Case{"/bin/true", {}, missing, missing + ": No such file or directory"},
             Case{"/bin/true", {std::string(4 << 20, 'x')}, "", "/bin/true: Argument list too long"},
         }) {
        SCOPED_TRACE(c.description);
        const Result<void> started =
            Processes(plainEnvironment).start(c.executable, c.arguments, c.workingDirectory);
        ASSERT_FALSE(started);
        EXPECT_EQ(started.error().description, c.description);
        if (!c.workingDirectory.empty())
            continue;
        const auto run = Processes(plainEnvironment).runAndWait(c.executable, c.arguments);
        ASSERT_FALSE(run);
        EXPECT_EQ(run.error().description, c.description);
    }
    EXPECT_FALSE(hasZombieChild());
}

TEST(Processes, tellsSuccessFromEveryOtherEnd) {
    struct Case {
        const char* script;
        bool succeeded;
        const char* standardError;
    };
    for (const Case& c : {Case{"exit 0", true, ""}, Case{"echo warning >&2", true, "warning\n"},
                          Case{"echo no >&2; exit 3", false, "no\n"}, Case{"kill -KILL $$", false, ""},
                          Case{"exec 2>&-; sleep 0.1; exit 4", false, ""}}) {
        SCOPED_TRACE(c.script);
        const Result<ProgramOutcome> outcome = runScript(c.script);
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->succeeded, c.succeeded);
        EXPECT_EQ(outcome->standardError, c.standardError);
    }
    EXPECT_FALSE(hasZombieChild());
}

TEST(Processes, takesInAllOfStandardErrorUpToTheLimit) {
    EXPECT_EQ(wordsOf("yes line | head -c 1000000 >&2; exit 1").size(), 1'000'000U);
    EXPECT_EQ(wordsOf("head -c 20000000 /dev/zero >&2; exit 1").size(), Processes::maximumStandardError);
}

TEST(Processes, doesNotWaitForWhatTheProgramLeavesBehind) {
    for (const char* leftBehind : {"sleep 60", "yes"}) {
        SCOPED_TRACE(leftBehind);
        const TemporaryDirectory directory;
        const auto begin = std::chrono::steady_clock::now();
        const std::string words = wordsOf("echo first >&2; " + std::string(leftBehind) + " >&2 & echo $! > " +
                                          directory.path("process") + "; exit 1");
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
        EXPECT_TRUE(words.starts_with("first\n"));
        endProcess(directory.read("process"));
    }
}

TEST(Processes, goesOnWaitingWhenASignalInterrupts) {
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

TEST(Processes, learnsHowAProgramEndedAlsoWhenStartedWithChildrenIgnored) {
    std::signal(SIGCHLD, SIG_IGN);
    const Result<ProgramOutcome> outcome = runScript("exit 0");
    std::signal(SIGCHLD, SIG_DFL);
    ASSERT_TRUE(outcome);
    EXPECT_TRUE(outcome->succeeded);
}

} // namespace kavendra
