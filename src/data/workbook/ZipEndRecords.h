#pragma once

#include <cstdint>

struct zip_source;

namespace kavendra {

struct ClaimedDirectories {
    std::uint64_t entries = 0;
    std::uint64_t bytes = 0;
};

/// Returns the sums of the entries and of the bytes that the end records of an archive claim for their
/// directories (PKWARE APPNOTE 4.3.14 to 4.3.16). libzip reads the directory of every end record at the end
/// of the file and allocates memory for the claimed number of entries, so check the claims before opening the
/// archive. The source must be open and have `size` bytes.
ClaimedDirectories claimedDirectories(zip_source* source, std::uint64_t size);

} // namespace kavendra
