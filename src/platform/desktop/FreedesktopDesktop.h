#pragma once

#include "base/Executor.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "platform/desktop/ActivationTokens.h"

#include <memory>

typedef struct _GDesktopAppInfo GDesktopAppInfo; // of GIO

namespace kavendra {

class AppearancePortal;

/// A freedesktop.org desktop through GIO, which knows mimeapps.list, D-Bus activation and the portals.
/// Programs it starts get the environment of `processes` and a new session, and leave no zombie. GIO starts
/// them on the window's thread, because that reads this process's environment; what may wait for a file
/// system is done before on the calling thread.
class FreedesktopDesktop : public Desktop {
public:
    /// Both must outlive this.
    FreedesktopDesktop(Processes& processes, Executor& executor);
    ~FreedesktopDesktop() override;

    Result<void> openURL(const std::string& url) override;
    Result<void> openFile(const std::string& path) override;
    /// Also accepts the id of an installed desktop entry ("firefox.desktop").
    bool isApplication(const std::string& path) override;
    /// Always fails for an application directory, which can only be started on macOS.
    Result<void> openURLWithApplication(const std::string& url, const std::string& applicationPath) override;
    bool canStartApplication(const std::string& path, const std::vector<std::string>& documents) override;
    Result<void> startApplication(const std::string& path,
                                  const std::vector<std::string>& documents) override;
    /// See BuiltinCommand.h.
    std::optional<std::string> builtinCommand(const std::string& command) override;
    /// Calls the file manager of the session (org.freedesktop.FileManager1), else opens the directory with
    /// its default handler. A file manager that does not answer within two seconds counts as success.
    Result<void> showDirectory(const std::string& path) override;
    /// Starts the installed terminal (see Terminal.h) and does not wait for it.
    Result<ProgramOutcome> openTerminal(const std::string& directory) override;
    std::vector<std::string> activationEnvironment() override;
    void copyText(const std::string& text) override;
    /// Does not use Qt for the clipboard of another X11 program.
    void readText(Clipboard clipboard, std::function<void(const std::string&)> received) override;
    /// `system` follows the settings portal, as the contrast always does.
    void setAppearance(Appearance appearance) override;
    bool prefersReducedMotion() override { return m_prefersReducedMotion; }
    /// First replaces an entry registered under an old name.
    StartupRegistrationStatus launchAtLoginStatus() override;
    Result<void> enableLaunchAtLogin() override;
    Result<void> disableLaunchAtLogin() override;

private:
    void updatePalette();
    Result<void> openURI(const std::string& uri);
    Result<void> start(GDesktopAppInfo* application, const std::vector<std::string>& uris);

    Processes& m_processes;
    Executor& m_executor;
    ActivationTokens m_tokens;
    Appearance m_appearance = Appearance::system;
    bool m_prefersReducedMotion = false;
    std::unique_ptr<AppearancePortal> m_portal;
};

} // namespace kavendra
