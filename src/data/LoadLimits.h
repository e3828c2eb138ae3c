#pragma once

#include <algorithm>
#include <cstddef>

/// The bounds of what one load of all data files may take. They are charged file by file, in the order of the
/// files; the file that goes beyond one is the one reported.
namespace kavendra::loadLimits {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Items of all files: four full sheets of a workbook. The table counts pixels in an int, which holds as many
/// rows of up to 511 pixels.
inline constexpr std::size_t items = std::size_t{4} << 20;

/// Bytes that an item takes besides its texts: 32 in the list, 16 in the search index, 4 of separators there,
/// 4 in the filtered rows, 8 in the table.
inline constexpr std::size_t itemCost = 64;

/// Bytes that all items may take (their cost and their texts, folded), for files of that size. A few bytes
/// of a file can be thousands in memory: rows of one letter, or rows that repeat a long shared string. A
/// million equal rows of 90 bytes, which spreadsheet programs write into 14 MB, take two thirds of this.
constexpr std::size_t itemMemory(std::size_t fileSize) {
    constexpr std::size_t atMost = 4096 * mebibyte;
    return std::min(atMost, 48 * mebibyte + 12 * fileSize);
}

/// Bytes that are taken and given back before items are shown, so that short memory is found where a load can
/// still fail: the table's sections and the filtered rows, twice each while they are replaced, take 32 for an
/// item; the rest is for the window and its threads, which end the program when they get none.
inline constexpr std::size_t shownItemCost = 64;

/// What parsing XML may cost (xmlCost) in workbooks of that size. A million equal rows of four cells, as
/// LibreOffice writes them into 15 MB, cost 153 million; a processor of 2023 does some 45 million a second.
constexpr std::size_t xmlCost(std::size_t fileSize) {
    return 56 * mebibyte + 8 * fileSize;
}

} // namespace kavendra::loadLimits
