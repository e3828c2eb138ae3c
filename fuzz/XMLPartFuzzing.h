#pragma once

#include "data/workbook/XMLPart.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kavendra {

/// Parses the bytes in pieces of `pieceLength`. Returns whether they are a complete part.
inline bool parsePieces(std::string_view bytes, std::size_t pieceLength, XMLHandler& handler) {
    const auto readPiece = [&](char* buffer, std::size_t capacity) -> Result<std::size_t> {
        const std::size_t count = std::min({capacity, pieceLength, bytes.size()});
        std::memcpy(buffer, bytes.data(), count);
        bytes.remove_prefix(count);
        return count;
    };
    return parseXML(readPiece, handler, "failed").has_value();
}

/// Parses the bytes in long pieces with the first parser and in short pieces with the second, and requires
/// that both succeed or both fail. The caller compares what the parsers found.
inline void parseInLongAndShortPieces(std::string_view bytes, XMLHandler& longPieces,
                                      XMLHandler& shortPieces) {
    require(parsePieces(bytes, 64 * 1024, longPieces) == parsePieces(bytes, 3, shortPieces));
}

} // namespace kavendra
