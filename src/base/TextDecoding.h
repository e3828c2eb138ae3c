#pragma once

#include "base/ByteBuffer.h"

#include <optional>

namespace kavendra {

/// Decodes a CSV file of unknown encoding to UTF-8, by the first of these encodings in which all bytes are
/// valid: UTF-8, Shift JIS, EUC-JP, UTF-16 with a byte-order mark, UTF-16 little-endian, UTF-16 big-endian,
/// ASCII. UTF-16 without a byte-order mark must also contain a comma or a line end, because most texts in
/// one-byte encodings are valid UTF-16. Drops a leading byte-order mark. Returns UTF-8 in the same buffer,
/// without copying. Returns nothing if the bytes are valid in none of the encodings.
std::optional<ByteBuffer> decodeText(ByteBuffer bytes);

/// Whether `bytes` is strict UTF-8: no surrogates, no overlong forms.
bool isValidUTF8(std::string_view bytes);

} // namespace kavendra
