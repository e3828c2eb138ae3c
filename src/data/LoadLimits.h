#pragma once

#include <algorithm>
#include <cstddef>

/// Limits for one load of all data files. The files are added up in their order; the error names the file
/// that exceeds a limit.
namespace kavendra::loadLimits {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Number of items of all files: four full sheets of a workbook. With this number, the height of the table in
/// pixels fits into an int if a row has at most 511 pixels.
inline constexpr std::size_t items = std::size_t{4} << 20;

/// Memory of an item without its texts, in bytes: 32 in the list, 12 and four separators in the search index,
/// 4 in the filtered rows and 4 in the parts of a search result, 8 in the table.
inline constexpr std::size_t itemCost = 64;

/// Memory that all items may need (itemCost and the folded texts), for files of `fileSize` bytes in all. Rows
/// of one letter, or rows that repeat a long shared string, need a thousand times the bytes that they have in
/// the file. A million equal rows of 90 bytes (14 MB in a workbook) need two thirds of the limit.
constexpr std::size_t itemMemory(std::size_t fileSize) {
    constexpr std::size_t atMost = 4096 * mebibyte;
    return std::min(atMost, 48 * mebibyte + 12 * fileSize);
}

/// Memory for each item that is allocated and freed before the items are shown. Without enough memory the
/// load fails, while the table would end the program. The table and the filtered rows need 32 bytes for an
/// item while they are replaced; the rest is for the window and its threads.
inline constexpr std::size_t shownItemCost = 64;

/// Limit of xmlCost() for workbooks of `fileSize` bytes in all. A million equal rows of four cells (15 MB by
/// LibreOffice) cost 153 million; a processor of 2023 parses about 45 million per second.
constexpr std::size_t xmlCost(std::size_t fileSize) {
    return 56 * mebibyte + 8 * fileSize;
}

} // namespace kavendra::loadLimits
