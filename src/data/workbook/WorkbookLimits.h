#pragma once

#include <cstddef>

/// The bounds of what a workbook may hold. No workbook that people keep comes near one of them; each stops a
/// file that was made to exhaust the reader. Beyond one, reading fails with LaunchError::invalidExcelFormat.
namespace kavendra::workbookLimits {

inline constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Of the file. A workbook of a million rows has a third of this; beyond it, what fills the file are
/// pictures.
inline constexpr std::size_t fileSize = 128 * mebibyte;

/// Entries of an archive: six parts for each of 2,700 sheets. libzip compares names that share a hash one by
/// one: 65,535 of them took 12 seconds.
inline constexpr std::size_t entries = 16'384;

/// Bytes of the archive's directory: a name of 70 letters and the extra fields of archivers for each entry.
inline constexpr std::size_t directorySize = entries * 180;

/// Bytes of XML of one workbook.
inline constexpr std::size_t inflatedSize = 1024 * mebibyte;

/// How much longer the XML may be than the file, beyond `inflatedAlways`. Deflate can make it 1,032 times as
/// long; sheets of a hundred thousand equal rows, written by LibreOffice and by openpyxl, were 20 times as
/// long.
inline constexpr std::size_t inflatedTimesFile = 100;
inline constexpr std::size_t inflatedAlways = 16 * mebibyte;

/// Of xl/workbook.xml and of the relationships: both name sheets, and the first may also name many ranges.
inline constexpr std::size_t packagePartSize = 32 * mebibyte;

/// Levels of nested elements; a worksheet has five, its extensions a dozen.
inline constexpr unsigned nesting = 64;

/// One tag with its attributes, one comment or one piece of text as the parser sees it: four attributes as
/// long as the text of a cell may be. An unfinished one is scanned again with each piece of input.
inline constexpr std::size_t tokenSize = mebibyte / 4;

/// What the XML parser itself may allocate; it needs a fraction of one MiB for the longest honest token.
inline constexpr std::size_t parserMemory = 16 * mebibyte;

/// Excel's own limits for a sheet.
inline constexpr std::size_t rows = 1'048'576;
inline constexpr int columns = 16'384;

/// The bytes of one cell or shared string: Excel allows 32,767 characters, of up to four bytes each, and the
/// reading of as many may stand beside them.
inline constexpr std::size_t cellSize = std::size_t{2} * 4 * 32'767;

/// Different texts of a workbook: the four columns of a full sheet.
inline constexpr std::size_t sharedStrings = 4 * rows;

/// Bytes of all different texts: what a million rows of 128 bytes take.
inline constexpr std::size_t textSize = 128 * mebibyte;

/// Bytes of all header rows of a workbook, which go to the log: an empty name in each of Excel's columns of
/// 80 sheets.
inline constexpr std::size_t headerTextSize = 4 * mebibyte;

} // namespace kavendra::workbookLimits
