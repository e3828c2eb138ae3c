#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Zip archives in memory (PKWARE APPNOTE 4.3), also such as no archiver would write.
namespace kavendra {

struct ZipEntry {
    std::string name;
    std::string content;
    bool isStored = false;

    // What the headers say instead of the truth.
    std::optional<std::uint32_t> size = {};
    std::optional<std::uint32_t> checksum = {};
    std::uint16_t flags = 0; ///< 1 is for an encrypted entry
    std::optional<std::uint16_t> method = {};
    std::optional<std::string> packed = {}; ///< instead of `content` as deflate has it
};

/// Returns what deflate makes of `block` repeated `times` times, without ever having all of it in memory.
std::string deflatedRepetition(const std::string& block, std::size_t times);

std::string makeZip(const std::vector<ZipEntry>& entries);

/// The pieces that makeZip puts together: an entry with its header, its place in the list, the record behind
/// the list.
std::string zipLocalEntry(const ZipEntry& entry);
std::string zipListedEntry(const ZipEntry& entry, std::size_t offset);
std::string zipEndRecord(std::size_t count, std::size_t listSize, std::size_t listOffset);

} // namespace kavendra
