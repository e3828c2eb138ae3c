#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "platform/desktop/RunningInstance.h"

#include <memory>

namespace kavendra {

/// Returns the desktop of the system that this was built for. What it starts gets the environment of
/// `processes`, which must outlive it.
std::unique_ptr<Desktop> makeDesktop(Processes& processes);

/// Makes this process the kavendra of the session. Returns null when there is one already, which has then
/// been asked to show its window.
std::unique_ptr<RunningInstance> becomeRunningInstance();

} // namespace kavendra
