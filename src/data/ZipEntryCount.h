#pragma once

#include <cstdint>

struct zip_source;

namespace kavendra {

/// Returns the largest number of entries that an archive claims with the zip64 extension (PKWARE APPNOTE
/// 4.3.14), 0 when it does not use it; without it an archive cannot claim more than 65,535. The source must
/// be open and have that many bytes. The library takes memory for as many entries as are claimed, so this is
/// asked before it.
std::uint64_t claimedZip64Entries(zip_source* source, std::uint64_t size);

} // namespace kavendra
