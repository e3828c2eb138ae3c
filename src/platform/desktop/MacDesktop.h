#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"

namespace kavendra {

/// The macOS desktop through its documented command-line tool, open(1). Plain C++, so it compiles and its
/// command lines are tested on every system. open(1) returns once Launch Services has answered.
class MacDesktop : public Desktop {
public:
    /// `starter` must outlive this.
    explicit MacDesktop(Processes& starter) : processes(starter) {}

    Result<void> openURL(const std::string& url) override;
    Result<void> openFile(const std::string& path) override;
    bool isApplication(const std::string& path) override;
    Result<void> openURLWithApplication(const std::string& url, const std::string& applicationPath) override;
    Result<void> showDirectory(const std::string& path) override;
    Result<ProgramOutcome> openTerminal(const std::string& directory) override;
    void copyText(const std::string& text) override;
    void setAppearance(Appearance appearance) override;
    StartupRegistrationStatus launchAtLoginStatus() override;
    Result<void> enableLaunchAtLogin() override;
    Result<void> disableLaunchAtLogin() override;

private:
    Result<void> open(const std::vector<std::string>& arguments);

    Processes& processes;
};

} // namespace kavendra
