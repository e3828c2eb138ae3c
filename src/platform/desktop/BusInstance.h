#pragma once

#include "platform/desktop/RunningInstance.h"

#include <memory>

namespace kavendra {

/// Makes this process the kavendra of the session by owning a name on the session bus, where it answers to
/// org.freedesktop.Application (Desktop Entry Specification, "D-Bus Activation").
///
/// Returns null when another process owns the name: that one has been asked to show its window, with the
/// activation token that this process was started with, and there is nothing left to do. One that does not
/// answer in time has been asked all the same, and does it when it can. Where there is no bus, or whoever
/// owns the name refuses, returns an instance that nobody can find. All of it takes at most busTimeLimit; a
/// bus that does not answer in that time is given up for the whole process (giveUpSessionBus).
///
/// Calls arrive through the default main context of GLib, as with ColorSchemePortal.
std::unique_ptr<RunningInstance> becomeInstanceOnBus();

} // namespace kavendra
