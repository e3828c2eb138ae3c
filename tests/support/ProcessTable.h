#pragma once

#include <functional>
#include <string>

/// What /proc knows about processes (proc(5)).
namespace kavendra {

struct ProcessStatus {
    char state = '?'; ///< 'Z' for a zombie
    int parent = 0;
    int session = 0;
};

/// Reads the text of a /proc/PID/stat file.
ProcessStatus parseProcessStatus(const std::string& text);

/// Whether a process blocks and ignores no signal, by the text of its /proc/PID/status file. The C library's
/// own signals, behind the standard ones, do not count.
bool handlesSignalsByDefault(const std::string& text);

/// Whether a child of this process has ended and nobody has taken its status.
bool hasZombieChild();

/// Asks every few milliseconds, for at most five seconds, until the answer is yes; returns the last answer.
bool eventually(const std::function<bool()>& condition);

} // namespace kavendra
