#pragma once

#include "platform/desktop/GLibHandles.h"

namespace kavendra {

/// Returns the session bus, null when there is none. That it goes away later does not end the process.
GObjectHandle<GDBusConnection> sessionBus();

} // namespace kavendra
