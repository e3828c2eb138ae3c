#pragma once

#include "base/Executor.h"

#include <memory>
#include <string>
#include <vector>

namespace kavendra {

/// Makes activation tokens, with which a launched program brings its window to the front: tokens of the
/// compositor on Wayland (XDG Activation), startup ids on X11 (Startup Notification Protocol). The functions
/// may be called on any thread but that of the window.
class ActivationTokens {
public:
    /// `executor` must outlive this.
    explicit ActivationTokens(Executor& executor);
    ~ActivationTokens();
    ActivationTokens(const ActivationTokens&) = delete;
    ActivationTokens& operator=(const ActivationTokens&) = delete;

    /// Returns a token for one program that the person has just launched in the window; empty when there is
    /// no display that gives one. Waits for the compositor for at most a tenth of a second.
    std::string next();

private:
    struct Wayland;

    Executor& m_executor;
    std::unique_ptr<Wayland> m_wayland;
};

/// Returns the environment variables (NAME=value) that pass a token to a program; none for an empty token.
/// Both variables get it, as GTK does: an X11 program on Wayland reads only the older one.
inline std::vector<std::string> environmentWithToken(const std::string& token) {
    if (token.empty())
        return {};
    return {"XDG_ACTIVATION_TOKEN=" + token, "DESKTOP_STARTUP_ID=" + token};
}

} // namespace kavendra
