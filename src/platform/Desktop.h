#pragma once

#include "base/Result.h"
#include "platform/Processes.h"

#include <functional>
#include <string>

namespace kavendra {

enum class Appearance { system, light, dark };

/// What the desktop knows about starting kavendra at login.
enum class StartupRegistrationStatus {
    notRegistered,
    enabled,
    requiresApproval, ///< registered, but switched off in the desktop's own settings
    notFound,         ///< there is no installed program that could be started
};

/// What the desktop does for an application. One implementation per system; each call answers at once.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Opens an address with its default handler. Returns whether the desktop took it.
    virtual bool openURL(const std::string& url) = 0;

    /// Opens a file with the default application of its type. Returns whether the desktop took it.
    virtual bool openFile(const std::string& path) = 0;

    /// Whether `path` names an application that an address can be opened with: an existing application
    /// directory (".app"), and on freedesktop systems also a desktop entry (".desktop").
    virtual bool isApplication(const std::string& path) = 0;

    /// Asks an application to open an address and returns; `failed` is called when the desktop refuses,
    /// now or later, on the caller's thread.
    virtual void openURLWithApplication(const std::string& url, const std::string& applicationPath,
                                        std::function<void()> failed) = 0;

    /// Shows a directory in the file manager. Returns whether the desktop took it.
    virtual bool showDirectory(const std::string& path) = 0;

    /// Opens a terminal in a directory. Returns how the program that opens it ended, success where that is
    /// not waited for; fails with the system's reason when it cannot be started.
    virtual Result<ProgramOutcome> openTerminal(const std::string& directory) = 0;

    /// Puts UTF-8 text in the place of what the clipboard holds; other bytes become replacement characters.
    virtual void copyText(const std::string& text) = 0;

    /// Sets the appearance of the application and all its windows.
    virtual void setAppearance(Appearance appearance) = 0;

    virtual StartupRegistrationStatus loginItemStatus() = 0;

    /// Has the desktop start kavendra at login. That it succeeded does not say that it is enabled: the status
    /// does.
    virtual Result<void> registerLoginItem() = 0;

    /// Undoes the registration; that there is none is no failure.
    virtual Result<void> unregisterLoginItem() = 0;
};

} // namespace kavendra
