#include "platform/desktop/Terminal.h"

#include "platform/ExecutableSearch.h"

#include <array>

namespace kavendra {

namespace {

struct KnownTerminal {
    std::string_view name;
    std::string_view commandOption;
};

/// First what stands for the chosen terminal, then those of desktops, then others.
constexpr std::array knownTerminals{
    KnownTerminal{"xdg-terminal-exec", ""}, KnownTerminal{"x-terminal-emulator", "-e"},
    KnownTerminal{"ptyxis", "--"},          KnownTerminal{"kgx", "--"},
    KnownTerminal{"gnome-terminal", "--"},  KnownTerminal{"konsole", "-e"},
    KnownTerminal{"xfce4-terminal", "-x"},  KnownTerminal{"mate-terminal", "-x"},
    KnownTerminal{"qterminal", "-e"},       KnownTerminal{"foot", ""},
    KnownTerminal{"alacritty", "-e"},       KnownTerminal{"kitty", ""},
    KnownTerminal{"wezterm", "-e"},         KnownTerminal{"ghostty", "-e"},
    KnownTerminal{"tilix", "-e"},           KnownTerminal{"terminator", "-x"},
    KnownTerminal{"urxvt", "-e"},           KnownTerminal{"xterm", "-e"},
};

} // namespace

std::optional<Terminal> installedTerminal(std::string_view pathVariable) {
    for (const auto& [name, commandOption] : knownTerminals)
        if (auto executable = resolveExecutable(name, pathVariable))
            return Terminal{.executable = std::move(*executable),
                            .commandOption = std::string(commandOption)};
    return std::nullopt;
}

} // namespace kavendra
