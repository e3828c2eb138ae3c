#pragma once

#include "base/Result.h"

#include <string>
#include <string_view>

/// The failures of launching. A failure of the system is passed on with the system's own reason.
namespace kavendra::LaunchError {

/// `text`: the web address as typed.
inline std::unexpected<Error> invalidURL(std::string_view text) {
    return std::unexpected(Error{std::string("Invalid URL: ").append(text)});
}

/// `command`: a path or a program name.
inline std::unexpected<Error> commandNotFound(std::string_view command) {
    return std::unexpected(Error{std::string("Command not found: ").append(command)});
}

inline std::unexpected<Error> applicationNotFound(std::string_view path) {
    return std::unexpected(Error{std::string("Application not found: ").append(path)});
}

inline std::unexpected<Error> failedToOpenInFinder(std::string_view path) {
    return std::unexpected(Error{std::string("Failed to open in Finder: ").append(path)});
}

/// `standardError`: the program's standard error.
inline std::unexpected<Error> scriptExecutionFailed(std::string_view standardError) {
    return std::unexpected(Error{std::string("Script execution failed: ").append(standardError)});
}

inline std::unexpected<Error> unterminatedQuote() {
    return std::unexpected(Error{"Params contains an unterminated quote"});
}

} // namespace kavendra::LaunchError
