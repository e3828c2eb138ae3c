#pragma once

#include <cstddef>

/// Limits for workbooks. They are far above what spreadsheet programs write; they stop files that were made
/// to exhaust the reader. A workbook that exceeds one fails with LaunchError::invalidExcelFormat.
namespace kavendra::workbookLimits {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Size of the file. A workbook with a million rows has a third of this; larger files contain pictures.
inline constexpr std::size_t fileSize = 128 * mebibyte;

/// Number of entries in the archive; enough for 2,700 sheets with six parts each. libzip compares all names
/// with the same hash: 65,535 such names took 12 s.
inline constexpr std::size_t entries = 16'384;

/// Size of the archive's directory: for each entry a name of 70 letters and extra fields.
inline constexpr std::size_t directorySize = entries * 180;

/// Size of all XML of a workbook.
inline constexpr std::size_t inflatedSize = 1024 * mebibyte;

/// The XML may have `inflatedAlways` bytes, plus `inflatedTimesFile` times the size of the file. Deflate can
/// reach a factor of 1,032; sheets of 100,000 equal rows by LibreOffice and openpyxl had a factor of 20.
inline constexpr std::size_t inflatedTimesFile = 100;
inline constexpr std::size_t inflatedAlways = 16 * mebibyte;

/// Size of xl/workbook.xml and of the relationships. Both list the sheets; the first also lists named ranges.
inline constexpr std::size_t packagePartSize = 32 * mebibyte;

/// Depth of nested elements. A worksheet has five levels, its extensions about twelve.
inline constexpr unsigned nesting = 64;

/// Size of a token of the XML parser: a tag with its attributes or a comment. Enough for four attributes with
/// the longest text of a cell. The parser scans an incomplete token again for each piece of input.
inline constexpr std::size_t tokenSize = mebibyte / 4;

/// Memory of the XML parser. The longest valid token needs less than 1 MiB.
inline constexpr std::size_t parserMemory = 16 * mebibyte;

/// Excel's limits for a sheet.
inline constexpr std::size_t rows = 1'048'576;
inline constexpr int columns = 16'384;

/// Size of a cell or a shared string: Excel allows 32,767 characters of up to four bytes, and a phonetic
/// reading of the same length.
inline constexpr std::size_t cellSize = std::size_t{2} * 4 * 32'767;

/// Number of shared strings: four columns of a full sheet.
inline constexpr std::size_t sharedStrings = 4 * rows;

/// Size of all different texts: 128 bytes for each of a million rows.
inline constexpr std::size_t textSize = 128 * mebibyte;

/// Size of all header rows, which are written to the log: 80 sheets with 16,384 empty names each.
inline constexpr std::size_t headerTextSize = 4 * mebibyte;

} // namespace kavendra::workbookLimits
