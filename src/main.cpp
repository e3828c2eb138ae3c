#include "app/CommandLine.h"
#include "app/ContentView.h"
#include "app/WindowMenus.h"
#include "base/Text.h"
#include "config/SettingsFile.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/ThreadExecutor.h"
#include "platform/desktop/SystemDesktop.h"
#include "ui/DisplayFailureReport.h"
#include "ui/EnterAutoRepeatFilter.h"
#include "ui/MainWindow.h"
#include "ui/Translation.h"

#include <QApplication>
#include <QPixmapCache>

#include <unistd.h>

#include <chrono>
#include <clocale>
#include <csignal>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kavendra {

namespace {

/// How long ending may take, whatever hangs.
constexpr std::chrono::milliseconds endTimeLimit{900};

/// In KiB. A style keeps what it has drawn with each palette, and every menu and every change of the
/// appearance makes new palettes. With Qt's limit of 10 MiB, memory grows for hours.
constexpr int pixmapCacheLimit = 128;

/// Returns the environment for launched programs: that of this process without its activation tokens, which
/// are for its own window.
std::vector<std::string> programEnvironment() {
    std::vector<std::string> environment = Processes::currentEnvironment();
    std::erase_if(environment, [](const std::string& entry) {
        return entry.starts_with("XDG_ACTIVATION_TOKEN=") || entry.starts_with("DESKTOP_STARTUP_ID=");
    });
    return environment;
}

/// Returns the path of the built-in items, in the build tree or once installed.
std::string builtInItemsPath() {
    constexpr const char* name = "Built-in.csv";
    const std::string inBuildTree = joinedPath(programDirectory(), name);
    return exists(inBuildTree) ? inBuildTree
                               : joinedPath(joinedPath(programDirectory(), KAVENDRA_RESOURCES), name);
}

/// Lets SIGTERM, SIGINT and SIGHUP end the event loop, as closing the window does. Call it before other
/// threads are created, which inherit the blocked signals.
void endOnSignals(ThreadExecutor& executor) {
    sigset_t endSignals;
    sigemptyset(&endSignals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&endSignals, number);
    pthread_sigmask(SIG_BLOCK, &endSignals, nullptr);
    executor.run([endSignals, &executor] {
        int number = 0;
        sigwait(&endSignals, &number);
        executor.post([] { QCoreApplication::quit(); });
    });
}

/// Shows the window until it is closed. Then waits until `deadline`, which begins at that moment, for actions
/// that were chosen and have not been carried out.
int showWindow(int argc, char* argv[], ContentView& content, WindowMenus& menus, RunningInstance& instance,
               ThreadExecutor& executor) {
    std::optional<DisplayFailureReport> failureReport(std::in_place);
    QApplication application(argc, argv);
    failureReport.reset();
    QApplication::setApplicationName(QStringLiteral("kavendra"));
    QApplication::setDesktopFileName(QStringLiteral(KAVENDRA_APPLICATION_ID));
    QPixmapCache::setCacheLimit(pixmapCacheLimit);
    installTranslations();
    EnterAutoRepeatFilter enterAutoRepeat;
    application.installEventFilter(&enterAutoRepeat);
    content.appear();
    executor.setWake([&application, &executor] {
        QMetaObject::invokeMethod(&application, [&executor] { executor.runPosted(); }, Qt::QueuedConnection);
    });

    int status = 0;
    {
        MainWindow window(content, menus);
        instance.onActivate = [&window](const std::string& token) {
            endStartupNotification(token);
            window.comeForward(token);
        };
        executor.runPosted(); // items that are there already are in the first picture
        window.show();
        status = QApplication::exec();
        // From now on the process ends in time, even if the bus or the display server does not answer.
        std::thread([status] {
            std::this_thread::sleep_for(endTimeLimit);
            _exit(status);
        }).detach();
        executor.setWake([] {});
        instance.onActivate = [](const std::string&) {};
    }
    executor.runPostedUntil(std::chrono::steady_clock::now() + endTimeLimit / 2,
                            [&content] { return !content.hasStepsInProgress(); });
    return status;
}

} // namespace

} // namespace kavendra

int main(int argc, char* argv[]) {
    using namespace kavendra;
    if (const auto status = exitStatusOfCommandLine(argc, argv))
        return *status;
    // Before other threads read the locale, which QApplication would change beneath them.
    std::setlocale(LC_ALL, "");
    // First, because libraries change the environment.
    Processes processes(programEnvironment());
    initializeTextServices();
    // Write errors (file size limit, closed pipe) are reported as errors instead of ending the process.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);

    ThreadExecutor executor;
    endOnSignals(executor);

    auto instance = becomeRunningInstance();
    if (!instance)
        _exit(0);

    const auto desktop = makeDesktop(processes, executor);
    ContentView content(*desktop, processes, executor, configurationDirectoryPath(), builtInItemsPath());
    WindowMenus menus(content, *desktop, processes, executor);
    content.start(); // the files are read while the window is made
    const int status = showWindow(argc, argv, content, menus, *instance, executor);
    instance.reset(); // releases the name on the bus
    // Without destroying what threads may still use: one that reads from a dead drive never ends.
    _exit(status);
}
