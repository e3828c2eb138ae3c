#pragma once

#include <functional>
#include <string>

/// Information about processes from /proc (proc(5)).
namespace kavendra {

/// Returns the session of a process from the text of its /proc/PID/stat file.
int sessionOfProcess(const std::string& text);

/// Whether a process blocks and ignores no standard signal, from the text of its /proc/PID/status file. The C
/// library uses the signals after the standard ones itself.
bool handlesSignalsByDefault(const std::string& text);

/// Whether a child of this process has ended and was not reaped.
bool hasZombieChild();

/// Waits until the condition holds, for at most 30 seconds; returns whether it holds.
bool eventually(const std::function<bool()>& condition);

} // namespace kavendra
