#include "data/workbook/ZipEndRecords.h"

#include <zip.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace kavendra {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view endSignature = "PK\5\6"sv;
constexpr std::string_view zip64LocatorSignature = "PK\6\7"sv;
constexpr std::string_view zip64EndSignature = "PK\6\6"sv;
constexpr std::size_t endSize = 22, zip64LocatorSize = 20, zip64EndSize = 56;

/// Where the library looks for end records: in front of the longest comment, with room for a locator.
constexpr std::size_t tailSize = zip64LocatorSize + endSize + 0x10000;

/// A claim counts at most as much, so that the sums cannot overflow.
constexpr std::uint64_t maximumClaim = std::uint64_t{1} << 40;

std::uint64_t littleEndian(std::string_view bytes, std::size_t offset, std::size_t size) {
    std::uint64_t number = 0;
    for (std::size_t byte = size; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[offset + byte]);
    return number;
}

/// Returns the bytes there, fewer of them when reading fails. They must be within the source: seeking in an
/// empty buffer crashes libzip 1.7.3.
std::string readAt(zip_source_t* source, std::uint64_t offset, std::size_t size) {
    std::string bytes(size, '\0');
    if (zip_source_seek(source, static_cast<zip_int64_t>(offset), SEEK_SET) != 0)
        return {};
    const zip_int64_t count = zip_source_read(source, bytes.data(), bytes.size());
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
}

/// The claims of the zip64 record that `locator` points to, none when there is no such record.
ClaimedDirectories zip64Claims(zip_source_t* source, std::uint64_t size, std::string_view locator) {
    const std::uint64_t offset = littleEndian(locator, 8, 8);
    if (size < zip64EndSize || offset > size - zip64EndSize)
        return {};
    const std::string record = readAt(source, offset, zip64EndSize);
    if (record.size() < zip64EndSize || !record.starts_with(zip64EndSignature))
        return {};
    return {.entries = littleEndian(record, 32, 8), .bytes = littleEndian(record, 40, 8)};
}

/// The claims of the record at that offset of the file, none when these bytes are no record by chance.
ClaimedDirectories endRecordClaims(std::string_view record, std::uint64_t offset) {
    const std::uint64_t entries = littleEndian(record, 10, 2);
    const std::uint64_t bytes = littleEndian(record, 12, 4);
    const bool isRecord =
        entries == littleEndian(record, 8, 2) && bytes + littleEndian(record, 16, 4) <= offset;
    return isRecord ? ClaimedDirectories{.entries = entries, .bytes = bytes} : ClaimedDirectories{};
}

} // namespace

ClaimedDirectories claimedDirectories(zip_source* source, std::uint64_t size) {
    if (size < endSize)
        return {};
    const auto tailLength = static_cast<std::size_t>(std::min<std::uint64_t>(size, tailSize));
    const std::string bytes = readAt(source, size - tailLength, tailLength);
    const std::string_view tail = bytes;
    ClaimedDirectories sum;
    for (std::size_t at = 0; (at = tail.find(endSignature, at)) != std::string::npos; ++at) {
        if (tail.size() - at < endSize)
            break;
        const std::string_view before = tail.substr(0, at);
        const bool isZip64 =
            at >= zip64LocatorSize && before.substr(at - zip64LocatorSize).starts_with(zip64LocatorSignature);
        const ClaimedDirectories claims =
            isZip64 ? zip64Claims(source, size, before.substr(at - zip64LocatorSize))
                    : endRecordClaims(tail.substr(at), size - tailLength + at);
        sum.entries += std::min(claims.entries, maximumClaim);
        sum.bytes += std::min(claims.bytes, maximumClaim);
    }
    return sum;
}

} // namespace kavendra
