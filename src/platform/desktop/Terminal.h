#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// A terminal program. Without arguments it shows a shell in the current directory.
struct Terminal {
    std::string executable; ///< absolute path
    /// The option after which a program and its arguments follow; empty when they follow directly.
    std::string commandOption;
};

/// Returns the terminal that the user or the distribution has chosen (xdg-terminal-exec, the freedesktop.org
/// proposal, else Debian's x-terminal-emulator), else the first known one that is installed. `pathVariable`
/// is a value of $PATH.
std::optional<Terminal> installedTerminal(std::string_view pathVariable);

} // namespace kavendra
