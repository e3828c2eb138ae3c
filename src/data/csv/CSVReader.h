#pragma once

#include "base/Result.h"
#include "data/DataFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Comma-separated values with the header in the first row (RFC 4180, read leniently: a quote may open
/// anywhere in a field, line ends may be LF, CRLF or CR, rows may differ in length).
namespace kavendra {

/// Turns CSV text into items. `text` is valid UTF-8 and is taken over, because the rows are views of it;
/// `fileName` is used in messages, `sourceName` becomes the items' source. Columns may stand in any order;
/// columns beyond the required ones are ignored, and of columns with the same name the first counts.
/// The log line is the header, or the number of the row in which an unterminated quote was opened: the header
/// is row 1, blank rows count, a line end within quotes does not begin a row.
/// `fileSize` is the size of the file if it was not UTF-8; it bounds the number of items.
/// Fails with LaunchError::invalidCSVFormat or missingRequiredColumns. Throws std::bad_alloc.
DataFileReading readCSVItems(ByteBuffer text, std::string_view fileName, std::string sourceName,
                             std::optional<std::size_t> fileSize = {});

/// Reads and decodes a file and turns it into items as above. Fails also with LaunchError::invalidCSVFormat
/// if the file cannot be read, has more than 1 GiB or has no known encoding.
DataFileReading readCSVFile(const DataFile& file, std::string sourceName);

} // namespace kavendra
