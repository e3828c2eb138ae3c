#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <memory>

namespace kavendra {

class ColorSchemePortal;

/// A freedesktop.org desktop through GIO, which knows mimeapps.list, D-Bus activation and the portals. What
/// it starts gets the environment of `processes`, is in a session of its own and leaves no zombie.
class FreedesktopDesktop : public Desktop {
public:
    /// `starter` must outlive this.
    explicit FreedesktopDesktop(Processes& starter);
    ~FreedesktopDesktop() override;

    Result<void> openURL(const std::string& url) override;
    Result<void> openFile(const std::string& path) override;
    /// Besides the path of a desktop entry, the id of one that is installed ("firefox.desktop").
    bool isApplication(const std::string& path) override;
    /// An application directory cannot be started here, so it always fails.
    Result<void> openURLWithApplication(const std::string& url, const std::string& applicationPath) override;
    /// Asks the file manager of the session (org.freedesktop.FileManager1), else the default handler of the
    /// directory. One that has not answered after two seconds counts as having taken it.
    Result<void> showDirectory(const std::string& path) override;
    /// Starts xdg-terminal-exec, the freedesktop.org proposal, else Debian's x-terminal-emulator.
    Result<ProgramOutcome> openTerminal(const std::string& directory) override;
    void copyText(const std::string& text) override;
    /// `system` follows what the settings portal says from then on.
    void setAppearance(Appearance appearance) override;
    StartupRegistrationStatus launchAtLoginStatus() override;
    Result<void> enableLaunchAtLogin() override;
    Result<void> disableLaunchAtLogin() override;

private:
    void showAppearance() const;

    Processes& processes;
    Appearance appearance = Appearance::system;
    std::unique_ptr<ColorSchemePortal> portal;
};

} // namespace kavendra
