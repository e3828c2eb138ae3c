#pragma once

#include "base/ByteBuffer.h"

#include <optional>

namespace kavendra {

/// Decodes a whole CSV file of unknown encoding to UTF-8. The first of these encodings wins in which every
/// byte is valid: UTF-8, Shift JIS, EUC-JP, UTF-16 with a byte-order mark, UTF-16 little-endian, UTF-16
/// big-endian, ASCII. UTF-16 without a byte-order mark must also hold a comma or a line end, because most
/// texts in one-byte encodings are valid in it. A leading byte-order mark is dropped. UTF-8 comes back in the
/// buffer it came in. Returns nothing when the bytes are valid in none.
std::optional<ByteBuffer> decodeText(ByteBuffer bytes);

/// Whether all bytes are UTF-8 in its strict form (no surrogates, no overlong forms).
bool isValidUTF8(std::string_view bytes);

} // namespace kavendra
