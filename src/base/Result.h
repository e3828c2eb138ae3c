#pragma once

#include <expected>
#include <string>
#include <string_view>

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
std::unexpected<Error> systemFailure(std::string_view path, int errorNumber);

} // namespace kavendra
