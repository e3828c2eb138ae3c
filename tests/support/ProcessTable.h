#pragma once

#include <functional>
#include <string>

/// Information about processes from /proc (proc(5)).
namespace kavendra {

/// Whether a process leads a session of its own and neither blocks nor ignores a standard signal (1 to 31),
/// from the text of its /proc/PID/status file. The C library itself uses the two signals after those.
bool isDetached(const std::string& status);

/// Whether a child of this process has ended and was not reaped.
bool hasZombieChild();

/// Waits until the condition holds, for at most 30 seconds; returns whether it holds.
bool eventually(const std::function<bool()>& condition);

} // namespace kavendra
