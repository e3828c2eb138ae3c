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

    bool openURL(const std::string& url) override;
    bool openFile(const std::string& path) override;
    bool isApplication(const std::string& path) override;
    void openURLWithApplication(const std::string& url, const std::string& applicationPath,
                                std::function<void()> failed) override;
    bool showDirectory(const std::string& path) override;
    Result<ProgramOutcome> openTerminal(const std::string& directory) override;
    void copyText(const std::string& text) override;
    void setAppearance(Appearance appearance) override;
    StartupRegistrationStatus loginItemStatus() override;
    Result<void> registerLoginItem() override;
    Result<void> unregisterLoginItem() override;

private:
    bool open(const std::vector<std::string>& arguments);

    Processes& processes;
};

} // namespace kavendra
