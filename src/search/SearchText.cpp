#include "search/SearchText.h"

#include "base/Text.h"
#include "data/LoadLimits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace kavendra {

namespace {

constexpr auto characterBits = [] {
    std::array<std::uint64_t, 256> bits{};
    for (std::size_t byte = 0; byte < bits.size(); ++byte)
        bits[byte] = characterBit(static_cast<char>(byte));
    return bits;
}();

/// Returns the character mask of a folded text.
std::uint64_t characterMask(std::string_view text) {
    std::uint64_t mask = 0;
    for (const char byte : text)
        mask |= characterBits[static_cast<std::uint8_t>(byte)];
    return mask;
}

bool isASCII(std::string_view text) {
    return std::ranges::none_of(text, [](char byte) { return static_cast<std::uint8_t>(byte) >= 0x80; });
}

constexpr std::size_t chunkSize = 16;
static_assert(chunkSize <= ByteBuffer::padding);

/// Copies a text and lowers its ASCII letters. Reads and writes whole chunks, which the compiler vectorises;
/// both buffers need padding. Returns the bitwise or of all bytes read: below 0x80 the text is ASCII, else it
/// may be ASCII, because the last chunk also holds what follows the text.
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

std::size_t textSize(const ItemRow& row) {
    std::size_t size = 0;
    for (const TextSpan span : row)
        size += span.length;
    return size;
}

std::size_t textSize(std::span<const ItemRow> rows) {
    std::size_t size = 0;
    for (const ItemRow& row : rows)
        size += textSize(row);
    return size;
}

constexpr std::size_t separators = requiredColumns.size(); ///< of a row: one behind each text

/// Remembers where the texts of a block are folded in the search text, so that a long string that many rows
/// of a part share is usually folded once. A text is found by its offset: spans are equal or do not overlap,
/// so at most one text of slotSize bytes or more begins in each stretch of slotSize bytes. Shorter texts are
/// folded again, and so are texts that share a slot: each thread has slots, so their number is limited.
class FoldedTexts {
public:
    explicit FoldedTexts(const SearchTextSource& source) {
        const std::size_t blockSize = source.block->text.size();
        if (textSize(source.rows) > blockSize) // else hardly any text is shared
            m_slots.resize(std::min(blockSize / slotSize + 1, maximumSlots));
    }

    struct Slot {
        std::size_t offset = 0; ///< of the text in the block
        std::size_t begin = 0;
        std::size_t length = 0; ///< 0 until the text is folded
    };

    /// Returns the slot of a text, or nullptr when it has none.
    Slot* slotOf(TextSpan span) {
        const bool hasSlot = !m_slots.empty() && span.length >= slotSize;
        return hasSlot ? &m_slots[span.offset / slotSize % m_slots.size()] : nullptr;
    }

private:
    static constexpr std::size_t slotSize = 16;
    static constexpr std::size_t maximumSlots = std::size_t{1} << 18; // 6 MiB

    std::vector<Slot> m_slots;
};

/// Appends rows to a search text. An ASCII row is copied and lowered; any other row is folded by ICU, which
/// is several times slower.
class SearchTextWriter {
public:
    explicit SearchTextWriter(const SearchTextSource& source) : m_source(source), m_foldedTexts(source) {
        m_result.firstItem = source.firstItem;
        m_result.text = ByteBuffer(textSize(source.rows) + source.rows.size() * separators);
        m_result.starts.reserve(source.rows.size() + 1);
        m_result.characters.reserve(source.rows.size());
    }

    void append(const ItemRow& row) {
        const std::size_t begin = m_used;
        if (!appendASCII(row))
            appendFolded(row);
        m_result.characters.push_back(characterMask({m_result.text.data() + begin, m_used - begin}));
        m_result.text.data()[m_used++] = '\n';
        m_result.starts.push_back(static_cast<std::uint32_t>(m_used));
    }

    /// Bytes that the items take so far.
    std::size_t memory() const { return m_used + m_result.size() * loadLimits::itemCost; }

    SearchText take() {
        m_result.text.setSize(m_used);
        m_result.text.shrinkToFit();
        return std::move(m_result);
    }

private:
    void reserve(std::size_t more) {
        ByteBuffer& text = m_result.text;
        if (text.capacity() - m_used >= more)
            return;
        text.setSize(m_used);
        text.reserve(std::max(m_used + more, m_used + m_used / 8));
    }

    /// Appends the row and returns true when it is ASCII; else appends nothing.
    bool appendASCII(const ItemRow& row) {
        reserve(textSize(row) + separators);
        char* const begin = m_result.text.data() + m_used;
        char* out = begin;
        std::uint8_t all = 0;
        for (const TextSpan span : row) {
            all |= copyLowered(m_source.block->text.data() + span.offset, span.length, out);
            out += span.length;
            *out++ = ' ';
        }
        const auto size = static_cast<std::size_t>(out - begin) - 1; // without the last space
        if (all >= 0x80 && !isASCII({begin, size}))
            return false;
        m_used += size;
        return true;
    }

    /// Appends the row column by column. The result is the same as folding the joined row, because neither
    /// lower-casing nor normalising looks across a space.
    void appendFolded(const ItemRow& row) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0)
                copy(" ");
            FoldedTexts::Slot* const slot = m_foldedTexts.slotOf(row[column]);
            if (slot && slot->length > 0 && slot->offset == row[column].offset) {
                reserve(slot->length + 1);
                copy({m_result.text.data() + slot->begin, slot->length});
                continue;
            }
            const std::string text = folded(m_source.block->value(row, column));
            reserve(text.size() + 1);
            if (slot)
                *slot = {.offset = row[column].offset, .begin = m_used, .length = text.size()};
            copy(text);
        }
    }

    /// Appends a text for which room is reserved.
    void copy(std::string_view text) {
        std::memcpy(m_result.text.data() + m_used, text.data(), text.size());
        m_used += text.size();
    }

    const SearchTextSource& m_source;
    FoldedTexts m_foldedTexts;
    SearchText m_result;
    std::size_t m_used = 0; ///< bytes of the text so far
};

/// How much memory is taken before it is asked for again.
constexpr std::size_t memoryStep = std::size_t{256} << 10;

} // namespace

std::string folded(std::string_view text) {
    // Lower-casing can undo the normalisation, so the text is normalised again.
    return normalized(lowercased(normalized(text)));
}

SearchText makeSearchText(const SearchTextSource& source, const std::function<bool(std::size_t)>& mayTake) {
    SearchTextWriter writer(source);
    std::size_t asked = 0;
    for (const ItemRow& row : source.rows) {
        writer.append(row);
        if (writer.memory() < asked + memoryStep)
            continue;
        asked = writer.memory();
        if (!mayTake(asked))
            return {};
    }
    return mayTake(writer.memory()) ? writer.take() : SearchText();
}

} // namespace kavendra
