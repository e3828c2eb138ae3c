#pragma once

#include <optional>

namespace kavendra {

/// Answers the options --help and --version and refuses all others, also arguments that are no options.
/// Returns the exit status of the program, or nothing when it is to be started. Needs neither a display nor a
/// bus.
std::optional<int> exitStatusOfCommandLine(int argc, char* argv[]);

} // namespace kavendra
