#pragma once

#include "platform/FileDescriptor.h"

#include <functional>
#include <string>
#include <vector>

namespace kavendra {

/// How to start a program.
struct ChildProcess {
    std::string executable;
    std::vector<std::string> arguments;              ///< without the program's own name
    std::vector<std::string> environment;            ///< entries of the form NAME=value
    std::string workingDirectory = {};               ///< the current one when empty
    FileDescriptor standardError = FileDescriptor{}; ///< inherited when there is none
};

/// Starts a program in a new session with default signal handling, and reaps it when it ends. Then `exited`
/// is called on another thread with the wait status. Returns 0, or an errno value if the program was not
/// started; `exited` is not called then.
int startAndReap(ChildProcess child, std::function<void(int status)> exited);

} // namespace kavendra
