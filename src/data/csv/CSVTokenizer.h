#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// Splits CSV text into fields. Every quote switches quoting on or off (a doubled quote switches it off and
/// on), so a byte is quoted if the number of quotes before it is odd. This is computed for 64 bytes at a
/// time.
namespace kavendra {

/// The positions of special characters in a block of 64 bytes, one bit for each byte, the first byte lowest.
struct CSVBlock {
    std::uint64_t quotes = 0;
    std::uint64_t separators = 0; ///< commas, line feeds and carriage returns
};

inline CSVBlock scanCSVBlockPlain(const char* bytes) {
    CSVBlock block;
    for (unsigned i = 0; i < 64; ++i) {
        const char byte = bytes[i];
        block.quotes |= std::uint64_t{byte == '"'} << i;
        block.separators |= std::uint64_t{byte == ',' || byte == '\n' || byte == '\r'} << i;
    }
    return block;
}

#ifdef __SSE2__
inline CSVBlock scanCSVBlock(const char* bytes) {
    CSVBlock block;
    for (unsigned part = 0; part < 4; ++part) {
        const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes) + part);
        const auto positions = [](__m128i equal) {
            return static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm_movemask_epi8(equal)));
        };
        const auto equal = [text](char byte) { return _mm_cmpeq_epi8(text, _mm_set1_epi8(byte)); };
        const __m128i lineEnds = _mm_or_si128(equal('\n'), equal('\r'));
        block.quotes |= positions(equal('"')) << (16 * part);
        block.separators |= positions(_mm_or_si128(equal(','), lineEnds)) << (16 * part);
    }
    return block;
}
#else
inline constexpr auto scanCSVBlock = scanCSVBlockPlain;
#endif

/// Sets each bit that has an odd number of bits set at and below it.
inline std::uint64_t prefixParity(std::uint64_t bits) {
    for (unsigned shift = 1; shift < 64; shift *= 2)
        bits ^= bits << shift;
    return bits;
}

/// A field in the text: the range [begin, end), with its quotes.
struct CSVField {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool hasQuotes = false;
};

/// Removes the quotes around the field and halves doubled quotes, in place. Moves bytes only after an inner
/// quote.
void unescapeCSVField(char* text, CSVField& field);

/// The fields and rows found so far, and the begin of the next field.
template <typename Handler>
struct CSVSplitter {
    const char* text;
    Handler& handler;
    std::size_t fieldBegin = 0;
    bool fieldHasQuotes = false;
    bool atRowStart = true;

    void endField(std::size_t position) {
        const char byte = text[position];
        const bool endsCRLF = byte == '\n' && atRowStart && position == fieldBegin && position > 0 &&
                              text[position - 1] == '\r';
        if (!endsCRLF) {
            handler.field(CSVField{fieldBegin, position, fieldHasQuotes});
            atRowStart = byte != ',';
            if (atRowStart)
                handler.endRow();
        }
        fieldBegin = position + 1;
        fieldHasQuotes = false;
    }

    /// A last line without a line end is a row unless it is empty.
    void endText(std::size_t size) {
        const std::string_view lastField(text + fieldBegin, size - fieldBegin);
        if (atRowStart && (lastField.empty() || lastField == "\"\""))
            return;
        handler.field(CSVField{fieldBegin, size, fieldHasQuotes});
        handler.endRow();
    }
};

/// Calls `handler.field(CSVField)` for each field and `handler.endRow()` after each row, in order. The
/// handler may overwrite the bytes of the field. Returns false if a quote is open at the end; the fields and
/// rows are then invalid.
template <auto scanBlock = scanCSVBlock, typename Handler>
bool tokenizeCSV(const char* text, std::size_t size, Handler&& handler) {
    CSVSplitter<std::remove_reference_t<Handler>> splitter{.text = text, .handler = handler};
    std::uint64_t quoted = 0; // all bits set while a quote is open
    std::array<char, 64> lastBlock{};
    for (std::size_t blockBegin = 0; blockBegin < size; blockBegin += 64) {
        const char* bytes = text + blockBegin;
        if (size - blockBegin < 64) {
            std::memcpy(lastBlock.data(), bytes, size - blockBegin);
            bytes = lastBlock.data();
        }
        CSVBlock block = scanBlock(bytes);
        if ((block.quotes | quoted) != 0) {
            const std::uint64_t inside = prefixParity(block.quotes) ^ quoted;
            block.separators &= ~inside;
            quoted = inside >> 63 ? ~std::uint64_t{0} : 0;
        }
        for (std::uint64_t rest = block.separators; rest != 0; rest &= rest - 1) {
            const std::uint64_t upTo = rest ^ (rest - 1);
            splitter.fieldHasQuotes |= (block.quotes & upTo) != 0;
            splitter.endField(blockBegin + static_cast<std::size_t>(std::countr_zero(rest)));
            block.quotes &= ~upTo;
        }
        splitter.fieldHasQuotes |= block.quotes != 0;
    }
    if (quoted != 0)
        return false;
    splitter.endText(size);
    return true;
}

} // namespace kavendra
