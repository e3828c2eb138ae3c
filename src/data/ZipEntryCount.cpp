#include "data/ZipEntryCount.h"

#include <zip.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace kavendra {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view locatorSignature = "PK\6\7"sv;
constexpr std::string_view recordSignature = "PK\6\6"sv;
constexpr std::size_t recordOffsetInLocator = 8, locatorSize = 20;
constexpr std::size_t countInRecord = 32, recordSize = 56;

/// The locator stands right in front of the last record of the archive, whose comment has 64 KiB at most.
constexpr std::size_t tailSize = locatorSize + 22 + 0xFFFF;

std::uint64_t littleEndian64(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t byte = 8; byte-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[byte]);
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

} // namespace

std::uint64_t claimedZip64Entries(zip_source* source, std::uint64_t size) {
    if (size < recordSize + locatorSize)
        return 0;
    const auto tailLength = static_cast<std::size_t>(std::min<std::uint64_t>(size, tailSize));
    const std::string tail = readAt(source, size - tailLength, tailLength);
    std::uint64_t largest = 0;
    for (std::size_t at = 0; (at = tail.find(locatorSignature, at)) != std::string::npos; ++at) {
        if (tail.size() - at < locatorSize)
            break;
        const std::uint64_t offset =
            littleEndian64(std::string_view(tail).substr(at + recordOffsetInLocator));
        if (offset > size - recordSize)
            continue;
        const std::string record = readAt(source, offset, recordSize);
        if (record.size() == recordSize && record.starts_with(recordSignature))
            largest = std::max(largest, littleEndian64(std::string_view(record).substr(countInRecord)));
    }
    return largest;
}

} // namespace kavendra
