#include "search/SearchText.h"

#include "base/Text.h"
#include "data/DataFile.h"
#include "data/LoadLimits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
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

/// Where the texts of a block stand folded in the arena, so that one that many rows share is folded once.
/// Every text of at least `slotSize` bytes has a slot of its own; shorter ones are folded again.
class FoldedTexts {
public:
    explicit FoldedTexts(const ItemBlock& block) {
        std::size_t size = 0;
        for (const ItemRow& row : block.rows)
            for (const TextSpan span : row)
                size += span.length;
        // Otherwise folding every text costs no more than folding the block once.
        if (size > block.text.size())
            slots.resize(block.text.size() / slotSize + 1);
    }

    struct Slot {
        std::size_t begin = 0;
        std::size_t length = 0; ///< 0 until the text is folded
    };

    Slot* slotOf(TextSpan span) {
        const bool hasSlot = !slots.empty() && span.length >= slotSize;
        return hasSlot ? &slots[span.offset / slotSize] : nullptr;
    }

private:
    static constexpr std::size_t slotSize = 16;

    std::vector<Slot> slots;
};

class Writer {
public:
    explicit Writer(const ItemList& items) {
        std::size_t size = 0;
        for (const ItemBlock& block : items.blocks())
            for (const ItemRow& row : block.rows)
                size += foldedSize(row);
        result.text = ByteBuffer(size);
        result.starts.reserve(items.size() + 1);
        result.characters.reserve(items.size());
    }

    /// Returns whether the items up to this block take no more memory than their files may.
    bool append(const ItemBlock& block) {
        fileSize += block.fileSize;
        const std::size_t memory = loadLimits::itemMemory(fileSize);
        FoldedTexts foldedTexts(block);
        for (const ItemRow& row : block.rows) {
            append(block, row, foldedTexts);
            if (used + result.characters.size() * loadLimits::itemCost > memory)
                return false;
        }
        return true;
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

    void append(const ItemBlock& block, const ItemRow& row, FoldedTexts& foldedTexts) {
        const std::size_t begin = used;
        if (!appendASCII(block, row))
            appendFolded(block, row, foldedTexts);
        result.characters.push_back(characterBits({result.text.data() + begin, used - begin}));
        result.text.data()[used++] = '\n';
        result.starts.push_back(used);
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

    /// Appends the row field by field: no rule of folding reaches across a space.
    void appendFolded(const ItemBlock& block, const ItemRow& row, FoldedTexts& foldedTexts) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0)
                copy(" ");
            FoldedTexts::Slot* const slot = foldedTexts.slotOf(row[column]);
            if (slot && slot->length > 0) {
                reserve(slot->length + 1);
                copy({result.text.data() + slot->begin, slot->length});
                continue;
            }
            const std::size_t begin = used;
            const std::string text = folded(block.value(row, column));
            reserve(text.size() + 1);
            copy(text);
            if (slot)
                *slot = {.begin = begin, .length = used - begin};
        }
    }

    /// Room must be reserved.
    void copy(std::string_view text) {
        std::memcpy(result.text.data() + used, text.data(), text.size());
        used += text.size();
    }

    SearchText result;
    std::size_t used = 0;
    std::size_t fileSize = 0; ///< of the blocks so far
};

/// Memory is taken for all files together, and most of it for this one.
std::string_view largestSource(const ItemList& items) {
    const auto memory = [](const ItemBlock& block) {
        return block.text.size() + block.rows.size() * loadLimits::itemCost;
    };
    const auto largest = std::ranges::max_element(items.blocks(), {}, memory);
    return largest == items.blocks().end() ? std::string_view() : largest->source;
}

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

Result<SearchText> makeSearchText(const ItemList& items) {
    try {
        Writer writer(items);
        for (const ItemBlock& block : items.blocks())
            if (!writer.append(block))
                return invalidDataFile(block.source, "too much text for the size of the file");
        const ByteBuffer memoryOfTheWindow(items.size() * loadLimits::shownItemCost);
        return writer.take();
    } catch (const std::bad_alloc&) {
        return notEnoughMemory(largestSource(items));
    }
}

} // namespace kavendra
