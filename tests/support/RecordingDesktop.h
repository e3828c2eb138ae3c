#pragma once

#include "platform/Desktop.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace kavendra {

/// Opens nothing: records each call as text; calls succeed while `accepts` is true.
class RecordingDesktop : public Desktop {
public:
    Result<void> openURL(const std::string& url) override { return record("openURL " + url); }
    Result<void> openFile(const std::string& path) override { return record("openFile " + path); }
    bool isApplication(const std::string& path) override { return applications.contains(path); }
    Result<void> openURLWithApplication(const std::string& url, const std::string& applicationPath) override {
        return record("openURLWithApplication " + url + " " + applicationPath);
    }
    bool canStartApplication(const std::string& path, const std::vector<std::string>& documents) override {
        return path.ends_with(".desktop") && applications.contains(path) &&
               std::ranges::find(documents, "refused") == documents.end();
    }
    Result<void> startApplication(const std::string& path,
                                  const std::vector<std::string>& documents) override {
        std::string call = "startApplication " + path;
        for (const std::string& document : documents)
            call += "|" + document;
        return record(call);
    }
    std::optional<std::string> builtinCommand(const std::string& command) override { return command; }
    Result<void> showDirectory(const std::string& path) override { return record("showDirectory " + path); }
    Result<ProgramOutcome> openTerminal(const std::string& directory) override {
        record("openTerminal " + directory);
        return terminalResult;
    }
    std::vector<std::string> activationEnvironment() override { return activation; }
    void copyText(const std::string& text) override { record("copyText " + text); }
    void readText(Clipboard clipboard, std::function<void(const std::string&)> received) override {
        received(clipboard == Clipboard::copied ? "copied text" : "selected text");
    }
    void setAppearance(Appearance appearance) override { appearances.push_back(appearance); }
    StartupRegistrationStatus launchAtLoginStatus() override { return startupStatus; }
    Result<void> enableLaunchAtLogin() override { return changeLaunchAtLogin("enableLaunchAtLogin"); }
    Result<void> disableLaunchAtLogin() override { return changeLaunchAtLogin("disableLaunchAtLogin"); }

    bool accepts = true;
    Result<ProgramOutcome> terminalResult = ProgramOutcome{.succeeded = true, .standardError = {}};
    std::set<std::string> applications;
    std::vector<std::string> activation;
    std::vector<std::string> calls;
    std::vector<Appearance> appearances;
    StartupRegistrationStatus startupStatus = StartupRegistrationStatus::notRegistered;
    StartupRegistrationStatus startupStatusAfterChange = StartupRegistrationStatus::enabled;
    Result<void> startupResult;

private:
    Result<void> record(std::string call) {
        calls.push_back(std::move(call));
        return accepts ? Result<void>() : std::unexpected(Error{"refused"});
    }

    Result<void> changeLaunchAtLogin(std::string call) {
        calls.push_back(std::move(call));
        startupStatus = startupStatusAfterChange;
        return startupResult;
    }
};

} // namespace kavendra
