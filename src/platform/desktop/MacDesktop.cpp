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

/// Returns a path that open(1) does not take for an option ("-a") or an address ("http:x").
std::string unambiguousPath(const std::string& path) {
    return path.starts_with('/') ? path : "./" + path;
}

} // namespace

Result<void> MacDesktop::open(const std::vector<std::string>& arguments) {
    const Result<ProgramOutcome> outcome = m_processes.runAndWait(m_openTool, arguments);
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
    return open({unambiguousPath(path)});
}

bool MacDesktop::isApplication(const std::string& path) {
    return isApplicationDirectory(path);
}

Result<void> MacDesktop::openURLWithApplication(const std::string& url, const std::string& applicationPath) {
    return open({"-a", unambiguousPath(applicationPath), url});
}

Result<void> MacDesktop::startApplication(const std::string& path, const std::vector<std::string>&) {
    return systemFailure(path, ENOTSUP);
}

Result<void> MacDesktop::showDirectory(const std::string& path) {
    if (!isDirectory(path))
        return systemFailure(path, ENOTDIR);
    // Opening an application directory would start the application, so it is shown in its parent directory.
    if (isApplicationDirectory(path))
        return open({"-R", unambiguousPath(path)});
    return open({unambiguousPath(path)});
}

Result<ProgramOutcome> MacDesktop::openTerminal(const std::string& directory) {
    Result<ProgramOutcome> outcome =
        m_processes.runAndWait(m_openTool, {"-a", "Terminal", unambiguousPath(directory)});
    if (outcome && !isValidUTF8(outcome->standardError))
        outcome->standardError = m_openTool;
    return outcome;
}

void MacDesktop::copyText(const std::string& text) {
    putOnClipboard(text);
}

void MacDesktop::readText(Clipboard clipboard, std::function<void(const std::string&)> received) {
    received(clipboardText(clipboard));
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
        return {}; // the status is notFound
    const std::string path = launchAgentPath();
    if (const auto created = createDirectories(std::string(parentPath(path))); !created)
        return created;
    return writeFileAtomically(path, launchAgent(executable));
}

Result<void> MacDesktop::disableLaunchAtLogin() {
    return removeFile(launchAgentPath());
}

} // namespace kavendra
