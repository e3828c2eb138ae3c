#include "search/SearchText.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace kavendra {

namespace {

constexpr std::size_t chunkSize = 16;
static_assert(chunkSize <= ByteBuffer::padding);

constexpr auto bitTable = [] {
    std::array<std::uint64_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = characterBit(static_cast<char>(byte));
    return table;
}();

/// Copies a text in lower-case ASCII. Reads and writes up to a whole chunk, so both need padding behind.
/// Returns a byte of at least 0x80 when a chunk held one that is not ASCII, maybe behind the text.
std::uint8_t copyLowered(const char* text, std::size_t size, char* copy) {
    std::uint8_t all = 0;
    for (std::size_t position = 0; position < size; position += chunkSize) {
        std::array<std::uint8_t, chunkSize> chunk;
        std::memcpy(chunk.data(), text + position, chunkSize);
        for (std::uint8_t& byte : chunk) {
            all |= byte;
            byte = static_cast<std::uint8_t>(byte + (static_cast<std::uint8_t>(byte - 'A') < 26 ? 32 : 0));
        }
        std::memcpy(copy + position, chunk.data(), chunkSize);
    }
    return all;
}

bool isASCII(std::string_view text) {
    return std::ranges::none_of(text, [](char byte) { return static_cast<std::uint8_t>(byte) >= 0x80; });
}

class Writer {
public:
    explicit Writer(const ItemList& items) {
        std::size_t rows = 0, size = 0;
        for (const ItemBlock& block : items.blocks()) {
            rows += block.rows.size();
            for (const ItemRow& row : block.rows)
                size += foldedSize(row);
        }
        result.text = ByteBuffer(size);
        result.starts.reserve(rows + 1);
        result.characters.reserve(rows);
    }

    void append(const ItemBlock& block, const ItemRow& row) {
        const std::size_t begin = used;
        if (!appendASCII(block, row))
            appendFolded(block, row);
        result.characters.push_back(characterBits({result.text.data() + begin, used - begin}));
        result.text.data()[used++] = '\n';
        result.starts.push_back(used);
    }

    SearchText take() {
        result.text.setSize(used);
        result.text.shrinkToFit();
        return std::move(result);
    }

private:
    /// What a row takes that folding does not lengthen, the separators included.
    static std::size_t foldedSize(const ItemRow& row) {
        std::size_t size = row.size();
        for (const TextSpan span : row)
            size += span.length;
        return size;
    }

    void reserve(std::size_t more) {
        ByteBuffer& text = result.text;
        if (text.capacity() - used >= more)
            return;
        text.setSize(used);
        text.reserve(std::max(used + more, used + used / 8));
    }

    /// Appends the row's text when it is ASCII; what is not needs more than the letters changed.
    bool appendASCII(const ItemBlock& block, const ItemRow& row) {
        reserve(foldedSize(row));
        char* const begin = result.text.data() + used;
        char* out = begin;
        std::uint8_t all = 0;
        for (const TextSpan span : row) {
            all |= copyLowered(block.text.data() + span.offset, span.length, out);
            out += span.length;
            *out++ = ' ';
        }
        --out;
        const auto size = static_cast<std::size_t>(out - begin);
        if (all >= 0x80 && !isASCII({begin, size}))
            return false;
        used += size;
        return true;
    }

    void appendFolded(const ItemBlock& block, const ItemRow& row) {
        std::string text;
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0)
                text += ' ';
            // Field by field: no rule of folding reaches across a space.
            text += folded(block.value(row, column));
        }
        reserve(text.size() + 1);
        std::memcpy(result.text.data() + used, text.data(), text.size());
        used += text.size();
    }

    SearchText result;
    std::size_t used = 0;
};

} // namespace

std::string folded(std::string_view text) {
    // Lower-casing can undo the normal form, so it is made again.
    return normalized(lowercased(normalized(text)));
}

std::uint64_t characterBits(std::string_view text) {
    std::uint64_t bits = 0;
    for (const char byte : text)
        bits |= bitTable[static_cast<std::uint8_t>(byte)];
    return bits;
}

SearchText makeSearchText(const ItemList& items) {
    Writer writer(items);
    for (const ItemBlock& block : items.blocks())
        for (const ItemRow& row : block.rows)
            writer.append(block, row);
    return writer.take();
}

} // namespace kavendra
