#pragma once

#include <expected>
#include <string>
#include <string_view>
#include <system_error>

namespace kavendra {

/// A failure, as text for the user: what failed and why. It may have several lines, for example a program's
/// standard error.
struct Error {
    std::string description;
};

template <typename T>
using Result = std::expected<T, Error>;

/// Returns the failure of a system call on `path`: "path: reason", the reason in strerror's words.
/// `errorNumber` is an errno value.
inline std::unexpected<Error> systemFailure(std::string_view path, int errorNumber) {
    return std::unexpected(Error{std::string(path) + ": " + std::generic_category().message(errorNumber)});
}

} // namespace kavendra
