#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace kavendra {

/// Estimates how often each byte occurs in one or more texts, from samples.
class ByteFrequencies {
public:
    ByteFrequencies() = default;
    explicit ByteFrequencies(std::string_view text) { add(text); }

    /// Counts a sample of `text`, at most 64 KiB.
    void add(std::string_view text);

    /// Returns the share of `byte` among all bytes, above 0 and at most 1.
    double operator[](char byte) const;

private:
    std::array<std::uint32_t, 256> m_counts{};
    std::uint32_t m_total = 0;
};

/// A byte to compare with the 64 bytes from `from` on.
struct ByteSearch {
    char byte;
    const char* from;
};

/// Returns a bit for each of the 64 offsets at which both bytes are found; the lowest bit is offset 0.
inline std::uint64_t commonOffsetsPlain(ByteSearch a, ByteSearch b) {
    std::uint64_t offsets = 0;
    for (unsigned i = 0; i < 64; ++i)
        offsets |= std::uint64_t{a.from[i] == a.byte && b.from[i] == b.byte} << i;
    return offsets;
}

#ifdef __SSE2__
inline std::uint64_t commonOffsets(ByteSearch a, ByteSearch b) {
    const auto equal = [](const ByteSearch& search, int part) {
        const auto* bytes = reinterpret_cast<const __m128i*>(search.from) + part;
        return _mm_cmpeq_epi8(_mm_loadu_si128(bytes), _mm_set1_epi8(search.byte));
    };
    const auto both = [&](int part) { return _mm_and_si128(equal(a, part), equal(b, part)); };
    const auto bits = [](__m128i offsets) {
        return std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(offsets))};
    };
    const __m128i offsets[] = {both(0), both(1), both(2), both(3)};
    if (bits(_mm_or_si128(_mm_or_si128(offsets[0], offsets[1]), _mm_or_si128(offsets[2], offsets[3]))) == 0)
        return 0;
    return bits(offsets[0]) | bits(offsets[1]) << 16 | bits(offsets[2]) << 32 | bits(offsets[3]) << 48;
}
#else
inline constexpr auto commonOffsets = commonOffsetsPlain;
#endif

/// Searches a text for one word. Looks for the two bytes of the word that are rarest in the text, 64
/// positions at a time, and compares the whole word only where both are found at their distance.
class SubstringSearch {
public:
    /// `word` must not be empty.
    SubstringSearch(std::string word, const ByteFrequencies& frequencies);

    /// Returns the expected share of positions with both rarest bytes, for ordering words by rarity.
    double expectedShare() const { return m_expectedShare; }

    /// Returns whether `text` contains the word. 64 bytes behind `text` must be readable.
    bool isIn(std::string_view text) const {
        bool found = false;
        forEachMatch(text, [&](std::size_t) {
            found = true;
            return text.size();
        });
        return found;
    }

    /// Calls `onMatch(position)` for the positions of the word in `text`, ascending. `onMatch` returns the
    /// first position to consider next. 64 bytes behind `text` must be readable.
    template <auto offsets = commonOffsets, typename OnMatch>
    void forEachMatch(std::string_view text, OnMatch&& onMatch) const {
        if (text.size() < m_word.size())
            return;
        const std::size_t end = text.size() - m_word.size() + 1; // behind the last possible match
        // Each set bit of `candidates` is a position of the block; `next` is what onMatch returned last.
        for (std::size_t block = 0, next = 0; block < end; block = std::max(block + 64, next)) {
            const char* const begin = text.data() + block;
            std::uint64_t candidates =
                offsets({m_rarest, begin + m_rarestAt}, {m_second, begin + m_secondAt});
            for (; candidates != 0; candidates &= candidates - 1) {
                const std::size_t position = block + static_cast<std::size_t>(std::countr_zero(candidates));
                if (position >= end)
                    return;
                if (position >= next && matchesAt(text.data() + position))
                    next = onMatch(position);
            }
        }
    }

private:
    bool matchesAt(const char* bytes) const {
        return m_word.size() <= 2 || std::memcmp(bytes, m_word.data(), m_word.size()) == 0;
    }

    std::string m_word;
    std::size_t m_rarestAt = 0, m_secondAt = 0; ///< offsets of the two rarest bytes in the word
    char m_rarest = 0, m_second = 0;
    double m_expectedShare = 0;
};

} // namespace kavendra
