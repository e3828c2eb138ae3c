#include "app/ContentView.h"
#include "app/WindowMenus.h"
#include "config/SettingsFile.h"
#include "platform/desktop/SystemDesktop.h"
#include "ui/EnterAutoRepeatFilter.h"
#include "ui/MainWindow.h"
#include "ui/Theme.h"
#include "ui/Translation.h"

#include <QApplication>

#include <csignal>
#include <string>
#include <vector>

namespace {

/// Returns the environment for launched programs: that of this process without its activation tokens, which
/// are for its own window.
std::vector<std::string> programEnvironment() {
    std::vector<std::string> environment = kavendra::Processes::currentEnvironment();
    std::erase_if(environment, [](const std::string& entry) {
        return entry.starts_with("XDG_ACTIVATION_TOKEN=") || entry.starts_with("DESKTOP_STARTUP_ID=");
    });
    return environment;
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace kavendra;
    // First, because libraries change the environment.
    Processes processes(programEnvironment());
    // Write errors (file size limit, closed pipe) are reported as errors instead of ending the process.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);

    const auto instance = becomeRunningInstance();
    if (!instance)
        return 0;

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kavendra"));
    QApplication::setDesktopFileName(QStringLiteral("kavendra"));
    QApplication::setWindowIcon(applicationIcon());
    installTranslations();
    EnterAutoRepeatFilter enterAutoRepeat;
    application.installEventFilter(&enterAutoRepeat);

    const auto desktop = makeDesktop(processes);
    const QString builtinFile =
        QApplication::applicationDirPath() + QStringLiteral("/" KAVENDRA_RESOURCES "/Built-in.csv");
    ContentView content(*desktop, processes, configurationDirectoryPath(), builtinFile.toStdString());
    WindowMenus menus(content, *desktop, processes);
    MainWindow window(content, menus);
    instance->onActivate = [&window](const std::string& token) { window.comeForward(token); };
    window.show();
    return QApplication::exec();
}
