#pragma once

#include <cstdlib>

namespace kavendra {

/// Stops the program, which the fuzzer reports with the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace kavendra
