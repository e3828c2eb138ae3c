#pragma once

#include "platform/desktop/GLibHandles.h"

#include <chrono>

namespace kavendra {

/// How long the session bus, and whoever is asked through it at the start, may take in all.
inline constexpr std::chrono::milliseconds busTimeLimit{1000};

/// Returns the session bus; null when there is none, or when it does not let this process in within the time.
/// The process goes on when the bus goes away later.
GObjectHandle<GDBusConnection> sessionBus(std::chrono::milliseconds timeLimit = busTimeLimit);

/// Makes this process, Qt included, do without a session bus from now on, instead of waiting again for one
/// that does not answer. Connections that exist stay. Call before other threads read the environment.
void giveUpSessionBus();

} // namespace kavendra
