#pragma once

#include "base/Result.h"
#include "data/DataFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Comma-separated values with the header in the first row (RFC 4180 with extensions: quotes anywhere in a
/// field, line ends LF, CRLF or CR, rows of different lengths).
namespace kavendra {

/// Reads items from CSV text, which must be valid UTF-8. `fileName` is used in messages, `sourceName` is the
/// source of the items. Columns may have any order; other columns are ignored, and of columns with the same
/// name the first is used. The log line is the header or, for an unterminated quote, the number of the row
/// that it is in. The header is row 1, blank rows count, and a line end inside quotes does not begin a row.
/// `fileSize` is the size of the file if it differs from the text's; it limits the number of items.
/// Fails with LaunchError::invalidCSVFormat or missingRequiredColumns. Throws std::bad_alloc.
DataFileReading readCSVItems(ByteBuffer text, std::string_view fileName, std::string sourceName,
                             std::optional<std::size_t> fileSize = {});

/// Reads and decodes a file, and then its items as above. Fails also with LaunchError::invalidCSVFormat
/// if the file cannot be read, has more than 1 GiB or has no known encoding.
DataFileReading readCSVFile(const DataFile& file, std::string sourceName);

} // namespace kavendra
