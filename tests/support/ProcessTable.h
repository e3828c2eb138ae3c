#pragma once

#include <functional>
#include <string>

/// What /proc knows about processes (proc(5)).
namespace kavendra {

/// The session of a process, by the text of its /proc/PID/stat file.
int sessionOfProcess(const std::string& text);

/// Whether a process blocks and ignores no signal, by the text of its /proc/PID/status file. The C library's
/// own signals, behind the standard ones, do not count.
bool handlesSignalsByDefault(const std::string& text);

/// Whether a child of this process has ended and nobody has taken its status.
bool hasZombieChild();

/// Asks every few milliseconds, for at most five seconds, until the answer is yes; returns the last answer.
bool eventually(const std::function<bool()>& condition);

} // namespace kavendra
