#pragma once

#include "data/workbook/XMLPart.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kavendra {

/// Parses the bytes in pieces of that length. Returns whether they are a whole part.
inline bool parsePieces(std::string_view bytes, std::size_t pieceLength, XMLHandler& handler) {
    const auto readPiece = [&](char* buffer, std::size_t capacity) -> Result<std::size_t> {
        const std::size_t count = std::min({capacity, pieceLength, bytes.size()});
        std::memcpy(buffer, bytes.data(), count);
        bytes.remove_prefix(count);
        return count;
    };
    return parseXML(readPiece, handler, "failed").has_value();
}

inline constexpr std::size_t pieceLengths[] = {64 * 1024, 3};

} // namespace kavendra
