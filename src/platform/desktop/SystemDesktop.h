#pragma once

#include "base/Executor.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <functional>
#include <memory>
#include <string>

/// The desktop and the running instance of the system that this program was built for.
namespace kavendra {

/// Returns the desktop. Programs that it starts get the environment of `processes`. Both arguments must
/// outlive it.
std::unique_ptr<Desktop> makeDesktop(Processes& processes, Executor& executor);

/// The kavendra of a session; there is at most one.
class RunningInstance {
public:
    RunningInstance() = default;
    virtual ~RunningInstance() = default;
    RunningInstance(const RunningInstance&) = delete;
    RunningInstance& operator=(const RunningInstance&) = delete;

    /// Called on the main thread, from its event loop, when kavendra is started again. The token lets a
    /// window take the focus (XDG Activation); it is empty when the second start had none.
    std::function<void(const std::string& activationToken)> onActivate = [](const std::string&) {};
};

/// Makes this process the kavendra of the session. Returns null when there is one already: it has been asked
/// to show its window, and this process should end.
///
/// On freedesktop systems the instance owns a name on the session bus and implements
/// org.freedesktop.Application (Desktop Entry Specification, "D-Bus Activation"). An owner that does not
/// answer in time counts as asked. Without a bus, or if the owner refuses, returns an instance that others
/// cannot find. Takes at most busTimeLimit in all; a bus that does not answer in that time is given up for
/// the whole process (giveUpSessionBus). Calls arrive through the default main context of GLib, as with
/// AppearancePortal.
std::unique_ptr<RunningInstance> becomeRunningInstance();

/// Ends the start-up notification of a second start with this token, which has shown the window of the
/// running instance instead, and lets the window come forward at the time of that start. Only X11 needs this.
/// Call it on the window's thread, before the window comes forward.
void endStartupNotification(const std::string& token);

} // namespace kavendra
