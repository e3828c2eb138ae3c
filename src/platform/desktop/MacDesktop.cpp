#include "platform/desktop/MacDesktop.h"

#include "base/TextDecoding.h"
#include "platform/ExecutablePath.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/ApplicationDirectory.h"
#include "platform/desktop/LaunchAgent.h"
#include "platform/desktop/QtAppearance.h"
#include "platform/desktop/QtClipboard.h"

namespace kavendra {

namespace {

constexpr const char* openTool = "/usr/bin/open";

/// open(1) would read a relative path as an option when it begins with "-", as an address when it looks so.
std::string unmistakable(const std::string& path) {
    return path.starts_with('/') ? path : "./" + path;
}

} // namespace

bool MacDesktop::open(const std::vector<std::string>& arguments) {
    const Result<ProgramOutcome> outcome = processes.runAndWait(openTool, arguments);
    return outcome && outcome->succeeded;
}

bool MacDesktop::openURL(const std::string& url) {
    return open({url});
}

bool MacDesktop::openFile(const std::string& path) {
    return open({unmistakable(path)});
}

bool MacDesktop::isApplication(const std::string& path) {
    return isApplicationDirectory(path);
}

void MacDesktop::openURLWithApplication(const std::string& url, const std::string& applicationPath,
                                        std::function<void()> failed) {
    if (!open({"-a", unmistakable(applicationPath), url}))
        failed();
}

bool MacDesktop::showDirectory(const std::string& path) {
    if (!isDirectory(path))
        return false;
    // Opening an application directory would start the application.
    if (isApplicationDirectory(path))
        return open({"-R", unmistakable(path)});
    return open({unmistakable(path)});
}

Result<ProgramOutcome> MacDesktop::openTerminal(const std::string& directory) {
    Result<ProgramOutcome> outcome =
        processes.runAndWait(openTool, {"-a", "Terminal", unmistakable(directory)});
    if (outcome && !isValidUTF8(outcome->standardError))
        outcome->standardError = openTool;
    return outcome;
}

void MacDesktop::copyText(const std::string& text) {
    putOnClipboard(text);
}

void MacDesktop::setAppearance(Appearance appearance) {
    applyAppearance(appearance);
}

StartupRegistrationStatus MacDesktop::loginItemStatus() {
    return launchAgentStatus(launchAgentPath(), executablePath());
}

Result<void> MacDesktop::registerLoginItem() {
    const std::string executable = executablePath();
    if (!isExecutableFile(executable))
        return {}; // nothing to name; the status says so
    const std::string path = launchAgentPath();
    if (const auto created = createDirectories(std::string(parentPath(path))); !created)
        return created;
    return writeFileAtomically(path, launchAgent(executable));
}

Result<void> MacDesktop::unregisterLoginItem() {
    return removeFile(launchAgentPath());
}

} // namespace kavendra
