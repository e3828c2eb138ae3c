#pragma once

#include "platform/FileDescriptor.h"

#include <functional>
#include <string>
#include <vector>

namespace kavendra {

/// All that a program is started with.
struct ChildProcess {
    std::string executable;
    std::vector<std::string> arguments;              ///< without the program's own name
    std::vector<std::string> environment;            ///< entries of the form NAME=value
    std::string workingDirectory = {};               ///< the current one when empty
    FileDescriptor standardError = FileDescriptor{}; ///< inherited when there is none
};

/// Starts a program in a session of its own with default signal handling, and reaps it when it ends; `ended`
/// is called then with its wait status, on another thread. Returns 0, or the errno value of what prevented
/// the start; then `ended` is never called.
int startAndReap(ChildProcess child, std::function<void(int status)> ended);

} // namespace kavendra
