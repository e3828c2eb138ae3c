#pragma once

#include "platform/desktop/GLibHandles.h"

#include <chrono>

namespace kavendra {

/// How long connecting to the session bus and calling another instance may take together.
inline constexpr std::chrono::milliseconds busTimeLimit{1000};

/// Returns the session bus; null when there is none or connecting takes longer than `timeLimit`. The process
/// is not ended when the connection is lost.
GObjectHandle<GDBusConnection> sessionBus(std::chrono::milliseconds timeLimit = busTimeLimit);

/// Disables the session bus for this process, also for Qt, so that nothing waits again for a bus that does
/// not answer. Existing connections stay. Changes the environment: call before other threads read it.
void giveUpSessionBus();

} // namespace kavendra
