#pragma once

#include "base/LogLine.h"
#include "base/Result.h"
#include "data/ItemList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Comma-separated values with the header in the first row (RFC 4180, read leniently: a quote may open
/// anywhere in a field, line ends may be LF, CRLF or CR, rows may differ in length).
namespace kavendra {

/// Returns the rows of `text`, each a list of its fields, untrimmed. Fails with
/// LaunchError::invalidCSVFormat "unterminated quote".
Result<std::vector<std::vector<std::string>>> parseCSVRows(std::string_view text);

/// Turns the text of one data file into items. `text` is valid UTF-8 and is taken over, because the rows are
/// views of it; `fileName` stands in messages, `sourceName` becomes the items' source. One line with the
/// header goes to the log, or one with the row in which an unterminated quote was opened: the header is row
/// 1, blank rows count, a line end within quotes does not begin a row. Columns may stand in any order, more
/// than the required ones are ignored, and of columns with the same name the first counts.
/// `fileSize` is the size of the file when it was not UTF-8; it bounds the number of items.
/// Fails with LaunchError::invalidCSVFormat or missingRequiredColumns. Throws std::bad_alloc.
Result<ItemBlock> readCSVItems(ByteBuffer text, std::string_view fileName, std::string sourceName,
                               const LogLine& appendLogLine, std::optional<std::size_t> fileSize = {});

} // namespace kavendra
