#include "platform/desktop/MacDesktop.h"

#include "base/TextDecoding.h"
#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"
#include "platform/desktop/LaunchAgent.h"
#include "platform/desktop/QtDesktop.h"

#include <cerrno>

namespace kavendra {

namespace {

constexpr const char* openTool = "/usr/bin/open";

/// open(1) would read a relative path as an option when it begins with "-", as an address when it looks so.
std::string unmistakable(const std::string& path) {
    return path.starts_with('/') ? path : "./" + path;
}

} // namespace

Result<void> MacDesktop::open(const std::vector<std::string>& arguments) {
    const Result<ProgramOutcome> outcome = processes.runAndWait(openTool, arguments);
    if (!outcome)
        return std::unexpected(outcome.error());
    if (!outcome->succeeded)
        return std::unexpected(Error{outcome->standardError});
    return {};
}

Result<void> MacDesktop::openURL(const std::string& url) {
    return open({url});
}

Result<void> MacDesktop::openFile(const std::string& path) {
    return open({unmistakable(path)});
}

bool MacDesktop::isApplication(const std::string& path) {
    return isApplicationDirectory(path);
}

Result<void> MacDesktop::openURLWithApplication(const std::string& url, const std::string& applicationPath) {
    return open({"-a", unmistakable(applicationPath), url});
}

Result<void> MacDesktop::showDirectory(const std::string& path) {
    if (!isDirectory(path))
        return systemFailure(path, ENOTDIR);
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

StartupRegistrationStatus MacDesktop::launchAtLoginStatus() {
    return launchAgentStatus(launchAgentPath(), executablePath());
}

Result<void> MacDesktop::enableLaunchAtLogin() {
    const std::string executable = executablePath();
    if (!isExecutableFile(executable))
        return {}; // nothing to name; the status says so
    const std::string path = launchAgentPath();
    if (const auto created = createDirectories(std::string(parentPath(path))); !created)
        return created;
    return writeFileAtomically(path, launchAgent(executable));
}

Result<void> MacDesktop::disableLaunchAtLogin() {
    return removeFile(launchAgentPath());
}

} // namespace kavendra
