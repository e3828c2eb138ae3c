#pragma once

#include <cstddef>

namespace kavendra {

/// Makes sure that an open file can hold `size` bytes without the disk becoming full on the way; what it
/// holds stays. Returns 0, or the errno value of the reason.
int reserveSpace(int fileDescriptor, std::size_t size);

} // namespace kavendra
