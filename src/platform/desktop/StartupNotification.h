#pragma once

#include <cstdint>
#include <optional>
#include <string>

typedef struct xcb_connection_t xcb_connection_t;

/// Startup ids of X11 (freedesktop.org, "Startup Notification Protocol").
namespace kavendra {

/// Returns a startup id that no other start has. `time` is that of the input that caused the start, in the X
/// server's milliseconds. No start-up notification is begun: not every program ends one.
std::string newStartupID(std::uint32_t time);

/// Returns the time in a startup id, nothing when it has none.
std::optional<std::uint32_t> timeOfStartupID(const std::string& id);

/// Tells all clients of the display that the start with this id has ended.
void sendStartupEnd(xcb_connection_t* connection, const std::string& id);

} // namespace kavendra
