#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>

/// The failures of settings, state and launch at login. A failure of the system is passed on with the
/// system's own reason.
namespace kavendra::LaunchError {

inline std::unexpected<Error> settingsFileInvalid(std::string_view path) {
    return std::unexpected(Error{std::string("Settings file is invalid: ").append(path)});
}

inline std::unexpected<Error> stateFileInvalid(std::string_view path) {
    return std::unexpected(Error{std::string("State file is invalid: ").append(path)});
}

/// `reason`: the desktop's error text.
inline std::unexpected<Error> startupRegistrationFailed(std::string_view reason) {
    return std::unexpected(Error{std::string("Failed to update startup registration: ").append(reason)});
}

} // namespace kavendra::LaunchError
