#pragma once

#include <optional>

namespace kavendra {

/// Answers the options --help and --version and refuses all others, also arguments that are no options.
/// "-session ID" is accepted: Qt gives it to an X11 session manager that starts the program again at the next
/// login. Returns the exit status of the program, or nothing when it is to be started. Needs neither a
/// display nor a bus.
std::optional<int> exitStatusOfCommandLine(int argc, char* argv[]);

} // namespace kavendra
