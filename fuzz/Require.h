#pragma once

#include <cstdlib>

namespace kavendra {

/// Aborts the program when the condition is false; the fuzzer then reports the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

} // namespace kavendra
