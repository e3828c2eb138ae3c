#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

struct xcb_connection_t;

namespace kavendra {

/// A connection to an X server.
using X11Connection = std::shared_ptr<xcb_connection_t>;

/// Connects to the server of $DISPLAY; null when that fails. Reads the environment, so it is for the window's
/// thread.
X11Connection connectToX11();

/// Reads text from a selection ("CLIPBOARD", "PRIMARY") as UTF-8 (ICCCM, "Peer-to-Peer Communication by Means
/// of Selections"). Waits for its owner, another program, at most `timeLimit`. Returns an empty text when
/// there is no owner or no text, or no answer in time. A text longer than `maximumSize` bytes is cut. May be
/// called on any thread; only one may use the connection.
std::string readX11Selection(const X11Connection& connection, const std::string& selection,
                             std::chrono::milliseconds timeLimit, std::size_t maximumSize);

} // namespace kavendra
