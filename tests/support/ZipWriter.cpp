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

template <typename Number>
void append(std::string& bytes, Number number) {
    for (std::size_t byte = 0; byte < sizeof number; ++byte)
        bytes += static_cast<char>(number >> (8 * byte));
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
    std::string bytes;
    append(bytes, std::uint16_t{20}); // version needed to extract
    append(bytes, entry.flags);
    append(bytes, entry.method.value_or(entry.isStored ? stored : deflated));
    append(bytes, date);
    const auto* content = reinterpret_cast<const Bytef*>(entry.content.data());
    append(bytes, entry.checksum.value_or(static_cast<std::uint32_t>(
                      crc32(0, content, static_cast<uInt>(entry.content.size())))));
    append(bytes, static_cast<std::uint32_t>(packedSize));
    append(bytes, entry.size.value_or(static_cast<std::uint32_t>(entry.content.size())));
    append(bytes, static_cast<std::uint16_t>(entry.name.size()));
    append(bytes, std::uint16_t{0}); // extra fields
    return bytes;
}

std::string localEntry(const ZipEntry& entry, const std::string& data) {
    return "PK\3\4" + commonFields(entry, data.size()) + entry.name + data;
}

std::string listedEntry(const ZipEntry& entry, std::size_t packedSize, std::size_t offset) {
    std::string bytes = "PK\1\2";
    append(bytes, std::uint16_t{20}); // version made by
    bytes += commonFields(entry, packedSize);
    bytes += std::string(10, '\0'); // comment, disk, attributes
    append(bytes, static_cast<std::uint32_t>(offset));
    return bytes + entry.name;
}

/// Returns the records of the zip64 extension with the number of entries.
std::string zip64EndRecords(std::size_t count, std::size_t listSize, std::size_t listOffset) {
    std::string bytes = "PK\6\6";
    append(bytes, std::uint64_t{44}); // the rest of this record
    append(bytes, std::uint32_t{45U << 16 | 45U});
    append(bytes, std::uint64_t{0}); // disks
    append(bytes, std::uint64_t{count});
    append(bytes, std::uint64_t{count});
    append(bytes, std::uint64_t{listSize});
    append(bytes, std::uint64_t{listOffset});
    bytes += "PK\6\7";
    append(bytes, std::uint32_t{0});
    append(bytes, std::uint64_t{listOffset + listSize});
    append(bytes, std::uint32_t{1});
    return bytes;
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
    std::string bytes;
    if (count >= fieldsWithoutZip64)
        bytes = zip64EndRecords(count, listSize, listOffset);
    const auto shownCount = static_cast<std::uint16_t>(std::min(count, fieldsWithoutZip64));
    bytes += "PK\5\6";
    append(bytes, std::uint32_t{0}); // disks
    append(bytes, shownCount);
    append(bytes, shownCount);
    append(bytes, static_cast<std::uint32_t>(listSize));
    append(bytes, static_cast<std::uint32_t>(listOffset));
    append(bytes, std::uint16_t{0}); // comment
    return bytes;
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
