#pragma once

#include "platform/Desktop.h"

#include <set>
#include <string>
#include <vector>

namespace kavendra {

/// Opens nothing: keeps what it is asked as texts, and answers `accepts`.
class RecordingDesktop : public Desktop {
public:
    bool openURL(const std::string& url) override { return answer("openURL " + url); }
    bool openFile(const std::string& path) override { return answer("openFile " + path); }
    bool isApplication(const std::string& path) override { return applications.contains(path); }
    void openURLWithApplication(const std::string& url, const std::string& applicationPath,
                                std::function<void()> failed) override {
        if (!answer("openURLWithApplication " + url + " " + applicationPath))
            failed();
    }
    bool showDirectory(const std::string& path) override { return answer("showDirectory " + path); }
    Result<ProgramOutcome> openTerminal(const std::string& directory) override {
        answer("openTerminal " + directory);
        return terminalResult;
    }
    void copyText(const std::string& text) override { answer("copyText " + text); }
    void setAppearance(Appearance appearance) override { appearances.push_back(appearance); }
    StartupRegistrationStatus loginItemStatus() override { return startupStatus; }
    Result<void> registerLoginItem() override { return changeLoginItem("registerLoginItem"); }
    Result<void> unregisterLoginItem() override { return changeLoginItem("unregisterLoginItem"); }

    bool accepts = true;
    Result<ProgramOutcome> terminalResult = ProgramOutcome{.succeeded = true, .standardError = {}};
    std::set<std::string> applications;
    std::vector<std::string> calls;
    std::vector<Appearance> appearances;
    StartupRegistrationStatus startupStatus = StartupRegistrationStatus::notRegistered;
    StartupRegistrationStatus startupStatusAfterChange = StartupRegistrationStatus::enabled;
    Result<void> startupResult;

private:
    bool answer(std::string call) {
        calls.push_back(std::move(call));
        return accepts;
    }

    Result<void> changeLoginItem(std::string call) {
        calls.push_back(std::move(call));
        startupStatus = startupStatusAfterChange;
        return startupResult;
    }
};

} // namespace kavendra
