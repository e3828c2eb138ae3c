#pragma once

#include "platform/Desktop.h"
#include "platform/MacTools.h"
#include "platform/Processes.h"

#include <string>
#include <utility>
#include <vector>

namespace kavendra {

/// The macOS desktop through open(1), which returns once Launch Services has answered. Needs no macOS
/// headers, so it is tested on every system.
class MacDesktop : public Desktop {
public:
    /// `processes` must outlive this.
    explicit MacDesktop(Processes& processes, std::string openTool = macTools().open)
        : m_processes(processes), m_openTool(std::move(openTool)) {}

    Result<void> openURL(const std::string& url) override;
    Result<void> openFile(const std::string& path) override;
    bool isApplication(const std::string& path) override;
    Result<void> openURLWithApplication(const std::string& url, const std::string& applicationPath) override;
    bool canStartApplication(const std::string&, const std::vector<std::string>&) override { return false; }
    /// Always fails, see canStartApplication.
    Result<void> startApplication(const std::string& path,
                                  const std::vector<std::string>& documents) override;
    std::optional<std::string> builtinCommand(const std::string& command) override { return command; }
    Result<void> showDirectory(const std::string& path) override;
    Result<ProgramOutcome> openTerminal(const std::string& directory) override;
    std::vector<std::string> activationEnvironment() override { return {}; }
    void copyText(const std::string& text) override;
    void readText(Clipboard clipboard, std::function<void(const std::string&)> received) override;
    void setAppearance(Appearance appearance) override;
    StartupRegistrationStatus launchAtLoginStatus() override;
    Result<void> enableLaunchAtLogin() override;
    Result<void> disableLaunchAtLogin() override;

private:
    /// Runs open(1). Fails with its standard error if it does not succeed.
    Result<void> open(const std::vector<std::string>& arguments);

    Processes& m_processes;
    std::string m_openTool;
};

} // namespace kavendra
