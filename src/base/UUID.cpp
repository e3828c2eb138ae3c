#include "base/UUID.h"

#include <cstdio>
#include <random>

namespace kavendra {

UUID UUID::random() {
    std::random_device entropy;
    const auto word = [&entropy] {
        return (static_cast<std::uint64_t>(entropy()) << 32) | static_cast<std::uint64_t>(entropy());
    };
    constexpr std::uint64_t versionMask = 0xF000, version4 = 0x4000;
    constexpr std::uint64_t variantMask = 0xC000000000000000, variantRFC4122 = 0x8000000000000000;
    return {.high = (word() & ~versionMask) | version4, .low = (word() & ~variantMask) | variantRFC4122};
}

std::string UUID::text() const {
    char buffer[37];
    std::snprintf(buffer, sizeof buffer, "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32),
                  static_cast<unsigned>(high >> 16 & 0xFFFF), static_cast<unsigned>(high & 0xFFFF),
                  static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xFFFFFFFFFFFF));
    return buffer;
}

} // namespace kavendra
