#pragma once

#include <cstdint>
#include <string>

namespace kavendra {

/// A universally unique identifier (RFC 4122): the first and the last 16 digits of its text form.
struct UUID {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    bool operator==(const UUID&) const = default;

    /// Returns a new random identifier (version 4) from the system's entropy source.
    static UUID random();

    /// Returns the standard upper-case hyphenated form.
    std::string text() const;
};

} // namespace kavendra
