#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Creates zip archives in memory (PKWARE APPNOTE 4.3), also invalid ones.
namespace kavendra {

struct ZipEntry {
    std::string name;
    std::string content;
    bool isStored = false;

    // Wrong values for the headers.
    std::optional<std::uint32_t> size = {};
    std::optional<std::uint32_t> checksum = {};
    std::uint16_t flags = 0; ///< 1: encrypted
    std::optional<std::uint16_t> method = {};
    std::optional<std::string> packed = {}; ///< data instead of the deflated `content`
};

/// Returns `block` repeated `times` times in deflated form, without having all of it in memory.
std::string deflatedRepetition(const std::string& block, std::size_t times);

std::string makeZip(const std::vector<ZipEntry>& entries);

/// The parts of an archive: a local entry, an entry of the central directory, the end record.
std::string zipLocalEntry(const ZipEntry& entry);
std::string zipListedEntry(const ZipEntry& entry, std::size_t offset);
std::string zipEndRecord(std::size_t count, std::size_t listSize, std::size_t listOffset);

} // namespace kavendra
