#pragma once

#include "base/Result.h"
#include "platform/Processes.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kavendra {

enum class Appearance { system, light, dark };

/// The state of launch at login in the desktop.
enum class StartupRegistrationStatus {
    notRegistered,
    enabled,
    requiresApproval, ///< registered, but switched off in the desktop's settings
    notFound,         ///< no executable to start is known
};

/// The two clipboards of a desktop.
enum class Clipboard {
    copied,   ///< what was copied
    selected, ///< X11 and Wayland: what was selected last, pasted with the middle mouse button
};

/// What the desktop does for an application; one implementation per system. An error is the system's or the
/// desktop's reason. The functions that open or start something or ask for an application,
/// builtinCommand, activationEnvironment and copyText may be called on any thread, at the same time, and wait
/// for the desktop's answer and for file systems; all others are for the window's thread.
class Desktop {
public:
    virtual ~Desktop() = default;

    /// Opens an address with its default handler.
    virtual Result<void> openURL(const std::string& url) = 0;

    /// Opens a file with the default application of its type.
    virtual Result<void> openFile(const std::string& path) = 0;

    /// Whether `path` is an application: an existing application directory (".app"), on freedesktop systems
    /// also a desktop entry (".desktop").
    virtual bool isApplication(const std::string& path) = 0;

    /// Opens an address with an application, one for which isApplication is true.
    virtual Result<void> openURLWithApplication(const std::string& url,
                                                const std::string& applicationPath) = 0;

    /// Whether `path` is an application that startApplication starts, and it opens all these documents: paths
    /// of existing files, and addresses. Always false on systems without desktop entries.
    virtual bool canStartApplication(const std::string& path, const std::vector<std::string>& documents) = 0;

    /// Starts an application, one for which canStartApplication is true, with documents.
    virtual Result<void> startApplication(const std::string& path,
                                          const std::vector<std::string>& documents) = 0;

    /// Returns the command of a built-in item on this machine: the desktop may replace words of the command
    /// by what the user or the system has chosen. Nothing when it could not be launched here.
    virtual std::optional<std::string> builtinCommand(const std::string& command) = 0;

    /// Shows a directory in the file manager.
    virtual Result<void> showDirectory(const std::string& path) = 0;

    /// Opens a terminal in a directory. Returns the outcome of the program that opens it, success if that
    /// program is not waited for. Fails when the program cannot be started.
    virtual Result<ProgramOutcome> openTerminal(const std::string& directory) = 0;

    /// Returns environment variables (NAME=value) that let one program, started now, bring its window to the
    /// front; none where the desktop needs none. Waits for at most a tenth of a second.
    virtual std::vector<std::string> activationEnvironment() = 0;

    /// Replaces the content of the clipboard by UTF-8 text; invalid bytes become replacement characters.
    virtual void copyText(const std::string& text) = 0;

    /// Reads text from a clipboard and calls `received` with it, on the window's thread: before this returns,
    /// or later when the program that owns the clipboard is slow. The text is empty when there is none or
    /// that program does not answer within a second.
    virtual void readText(Clipboard clipboard, std::function<void(const std::string&)> received) = 0;

    /// Sets the appearance of the application and all its windows.
    virtual void setAppearance(Appearance appearance) = 0;

    /// Whether the user prefers windows without motion. Known from the first setAppearance on.
    virtual bool prefersReducedMotion() { return false; }

    virtual StartupRegistrationStatus launchAtLoginStatus() = 0;

    /// Registers kavendra to be started at login. Success does not imply enabled; check
    /// launchAtLoginStatus().
    virtual Result<void> enableLaunchAtLogin() = 0;

    /// Removes the registration; no error if there is none.
    virtual Result<void> disableLaunchAtLogin() = 0;
};

} // namespace kavendra
