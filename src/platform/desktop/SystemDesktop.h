#pragma once

#include "platform/Desktop.h"
#include "platform/Processes.h"

#include <memory>

namespace kavendra {

/// Returns the desktop of the system that this was built for. What it starts gets the environment of
/// `processes`, which must outlive it.
std::unique_ptr<Desktop> makeDesktop(Processes& processes);

} // namespace kavendra
