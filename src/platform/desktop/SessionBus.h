#pragma once

#include "platform/desktop/GLibHandles.h"

#include <chrono>
#include <string>

namespace kavendra {

/// How long connecting to the session bus and calling another instance may take together.
inline constexpr std::chrono::milliseconds busTimeLimit{1000};

/// Returns the session bus; null when there is none or connecting takes longer than `timeLimit`. The process
/// is not ended when the connection is lost.
GObjectHandle<GDBusConnection> sessionBus(std::chrono::milliseconds timeLimit = busTimeLimit);

/// Disables the session bus for this process, also for Qt, so that nothing waits again for a bus that does
/// not answer. Existing connections stay. Changes the environment: call before other threads read it.
void giveUpSessionBus();

/// Returns the path of the object that the application with a bus name exports: the name with slashes
/// (Desktop Entry Specification, "D-Bus Activation").
std::string objectPathOf(std::string busName);

/// Calls a method of a service, which may have to be started first; `parameters` is floating. Returns false
/// when there is no such service or it refused. No answer within two seconds counts as success: it may still
/// be starting.
bool callService(GDBusConnection* bus, const char* name, const char* path, const char* interface,
                 const char* method, GVariant* parameters);

} // namespace kavendra
