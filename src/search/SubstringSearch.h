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

/// How often each byte stands in a text, by a sample of it.
class ByteFrequencies {
public:
    ByteFrequencies() = default;
    explicit ByteFrequencies(std::string_view text);

    /// Returns the share of `byte` among all bytes, above 0 and at most 1.
    double operator[](char byte) const;

private:
    std::array<std::uint32_t, 256> counts{};
    std::uint32_t total = 0;
};

/// A byte to look for, from a place on.
struct ByteSearch {
    char byte;
    const char* from;
};

/// Returns at which of 64 places both bytes stand, one bit a place, the first place the lowest bit.
inline std::uint64_t commonPlacesPlain(ByteSearch a, ByteSearch b) {
    std::uint64_t places = 0;
    for (unsigned i = 0; i < 64; ++i)
        places |= std::uint64_t{a.from[i] == a.byte && b.from[i] == b.byte} << i;
    return places;
}

#ifdef __SSE2__
inline std::uint64_t commonPlaces(ByteSearch a, ByteSearch b) {
    const auto equal = [](const ByteSearch& search, int part) {
        const auto* bytes = reinterpret_cast<const __m128i*>(search.from) + part;
        return _mm_cmpeq_epi8(_mm_loadu_si128(bytes), _mm_set1_epi8(search.byte));
    };
    const auto both = [&](int part) { return _mm_and_si128(equal(a, part), equal(b, part)); };
    const auto bits = [](__m128i places) {
        return std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(places))};
    };
    const __m128i places[] = {both(0), both(1), both(2), both(3)};
    if (bits(_mm_or_si128(_mm_or_si128(places[0], places[1]), _mm_or_si128(places[2], places[3]))) == 0)
        return 0;
    return bits(places[0]) | bits(places[1]) << 16 | bits(places[2]) << 32 | bits(places[3]) << 48;
}
#else
inline constexpr auto commonPlaces = commonPlacesPlain;
#endif

/// A search for one word, by the two of its bytes that are rarest in the text: only where both stand at
/// their places is the word compared.
class SubstringSearch {
public:
    /// `word` is not empty.
    SubstringSearch(std::string word, const ByteFrequencies& frequencies);

    /// About how often the two bytes meet, for choosing what to search first.
    double rarity() const { return expected; }
    const std::string& word() const { return text; }

    /// Whether `searched` contains the word. 64 bytes behind it must be readable.
    bool isIn(std::string_view searched) const {
        bool found = false;
        forEachMatch(searched, [&](std::size_t) {
            found = true;
            return searched.size();
        });
        return found;
    }

    /// Calls `onMatch(position)` for the places of the word in `searched`, ascending; it returns the first
    /// position to consider after that. 64 bytes behind `searched` must be readable.
    template <auto places = commonPlaces, typename OnMatch>
    void forEachMatch(std::string_view searched, OnMatch&& onMatch) const {
        if (searched.size() < text.size())
            return;
        const std::size_t end = searched.size() - text.size() + 1; // behind the last possible match
        const char* bytes = searched.data();
        for (std::size_t block = 0, next = 0; block < end; block = std::max(block + 64, next)) {
            std::uint64_t candidates =
                places({rarest, bytes + block + rarestAt}, {second, bytes + block + secondAt});
            for (; candidates != 0; candidates &= candidates - 1) {
                const std::size_t position = block + static_cast<std::size_t>(std::countr_zero(candidates));
                if (position >= end)
                    return;
                if (position >= next && matchesAt(bytes + position))
                    next = onMatch(position);
            }
        }
    }

private:
    bool matchesAt(const char* bytes) const {
        return text.size() <= 2 || std::memcmp(bytes, text.data(), text.size()) == 0;
    }

    std::string text;
    std::size_t rarestAt = 0, secondAt = 0;
    char rarest = 0, second = 0;
    double expected = 0;
};

} // namespace kavendra
