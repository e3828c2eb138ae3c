#include "tests/support/ZipWriter.h"

#define ZLIB_CONST // input is const
#include <zlib.h>

#include <algorithm>
#include <cstdlib>

namespace kavendra {

namespace {

constexpr std::uint16_t stored = 0, deflated = 8;
constexpr std::uint32_t date = 0x5A210000; // 2025-01-01
constexpr std::size_t fieldsWithoutZip64 = 0xFFFF;

/// Returns the numbers as the format has them: one after the other, little-endian.
template <typename... Numbers>
std::string fields(Numbers... numbers) {
    std::string bytes;
    const auto append = [&bytes](auto number) {
        for (std::size_t byte = 0; byte < sizeof number; ++byte)
            bytes += static_cast<char>(number >> (8 * byte));
    };
    (append(numbers), ...);
    return bytes;
}

std::uint16_t half(std::size_t number) {
    return static_cast<std::uint16_t>(number);
}

std::uint32_t word(std::size_t number) {
    return static_cast<std::uint32_t>(number);
}

/// Returns the text as deflate blocks that end at a byte boundary; with Z_FINISH the last block ends the
/// stream.
std::string deflateBlocks(const std::string& text, int flush) {
    z_stream stream{};
    if (deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        std::abort();
    std::string result(deflateBound(&stream, text.size()) + 16, '\0');
    stream.next_in = reinterpret_cast<const Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    if (deflate(&stream, flush) != (flush == Z_FINISH ? Z_STREAM_END : Z_OK))
        std::abort();
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

std::string packed(const ZipEntry& entry) {
    if (entry.packed)
        return *entry.packed;
    return entry.isStored ? entry.content : deflateBlocks(entry.content, Z_FINISH);
}

/// Returns the fields that both headers of an entry have.
std::string commonFields(const ZipEntry& entry, std::size_t packedSize) {
    const auto* content = reinterpret_cast<const Bytef*>(entry.content.data());
    const std::size_t checksum = crc32(0, content, static_cast<uInt>(entry.content.size()));
    return fields(half(20), entry.flags, // version needed to extract
                  entry.method.value_or(entry.isStored ? stored : deflated), date,
                  entry.checksum.value_or(word(checksum)), word(packedSize),
                  entry.size.value_or(word(entry.content.size())), half(entry.name.size()),
                  half(0)); // extra fields
}

std::string localEntry(const ZipEntry& entry, const std::string& data) {
    return "PK\3\4" + commonFields(entry, data.size()) + entry.name + data;
}

std::string listedEntry(const ZipEntry& entry, std::size_t packedSize, std::size_t offset) {
    const std::string commentDiskAndAttributes(10, '\0');
    return "PK\1\2" + fields(half(20)) + commonFields(entry, packedSize) + commentDiskAndAttributes +
           fields(word(offset)) + entry.name;
}

/// Returns the records of the zip64 extension with the number of entries.
std::string zip64EndRecords(std::uint64_t count, std::uint64_t listSize, std::uint64_t listOffset) {
    constexpr std::uint64_t restOfRecord = 44, disks = 0;
    return "PK\6\6" + fields(restOfRecord, word(45U << 16 | 45U), disks, count, count, listSize, listOffset) +
           "PK\6\7" + fields(word(0), listOffset + listSize, word(1));
}

} // namespace

std::string deflatedRepetition(const std::string& block, std::size_t times) {
    const std::string blocks = deflateBlocks(block, Z_FULL_FLUSH);
    std::string result;
    for (std::size_t count = 0; count < times; ++count)
        result += blocks;
    return result + deflateBlocks("", Z_FINISH);
}

std::string zipLocalEntry(const ZipEntry& entry) {
    return localEntry(entry, packed(entry));
}

std::string zipListedEntry(const ZipEntry& entry, std::size_t offset) {
    return listedEntry(entry, packed(entry).size(), offset);
}

std::string zipEndRecord(std::size_t count, std::size_t listSize, std::size_t listOffset) {
    const std::uint16_t shownCount = half(std::min(count, fieldsWithoutZip64));
    return (count >= fieldsWithoutZip64 ? zip64EndRecords(count, listSize, listOffset) : "") + "PK\5\6" +
           fields(word(0), shownCount, shownCount, word(listSize), word(listOffset), half(0));
}

std::string makeZip(const std::vector<ZipEntry>& entries) {
    std::string archive, list;
    for (const ZipEntry& entry : entries) {
        const std::string data = packed(entry);
        list += listedEntry(entry, data.size(), archive.size());
        archive += localEntry(entry, data);
    }
    const std::string end = zipEndRecord(entries.size(), list.size(), archive.size());
    return archive + list + end;
}

} // namespace kavendra
