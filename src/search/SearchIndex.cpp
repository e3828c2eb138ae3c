#include "search/SearchIndex.h"

#include "base/Parallel.h"
#include "base/Text.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <ranges>
#include <string>
#include <utility>

namespace kavendra {

namespace {

using Indexes = std::vector<std::uint32_t>;

/// A word of a search text, folded. An item must contain one of the two spellings.
struct Spellings {
    std::string text;
    std::string katakana; ///< the same as `text` if that has no Hiragana

    bool operator==(const Spellings&) const = default;

    /// Whether every item that contains this word contains the other one as well.
    bool beginsWith(const Spellings& other) const {
        return text.starts_with(other.text) && katakana.starts_with(other.katakana);
    }
};

std::vector<Spellings> spelledWords(std::string_view searchText) {
    std::vector<Spellings> words;
    const std::string text = folded(searchText);
    for (const std::string_view word : splitWords(text)) {
        std::string katakana = normalized(hiraganaToKatakana(word));
        words.push_back(
            {.text = std::string(word), .katakana = katakana.empty() ? std::string(word) : katakana});
    }
    return words;
}

/// Whether each of the earlier words is still there, in its place and perhaps with more letters. Then the
/// items that contain all words are among those that contain the earlier ones. Letters may also change the
/// one before them when they are folded (e and an accent, a final sigma); then this is false.
bool addTo(const std::vector<Spellings>& earlier, const std::vector<Spellings>& words) {
    return earlier.size() <= words.size() &&
           std::equal(earlier.begin(), earlier.end(), words.begin(),
                      [](const Spellings& before, const Spellings& now) { return now.beginsWith(before); });
}

/// Removes the words that are the same, in the same place, as before. `before` must not have more words.
void removeSame(std::vector<Spellings>& words, const std::vector<Spellings>& before) {
    std::vector<Spellings> others;
    for (std::size_t place = 0; place < words.size(); ++place)
        if (place >= before.size() || words[place] != before[place])
            others.push_back(std::move(words[place]));
    words = std::move(others);
}

/// A word as it is searched.
struct Word {
    std::vector<SubstringSearch> spellings;

    Word(const Spellings& word, const ByteFrequencies& frequencies) {
        spellings.emplace_back(word.text, frequencies);
        if (word.katakana != word.text)
            spellings.emplace_back(word.katakana, frequencies);
    }

    double expectedShare() const {
        double sum = 0;
        for (const SubstringSearch& spelling : spellings)
            sum += spelling.expectedShare();
        return sum;
    }

    bool isIn(std::string_view item) const {
        return std::ranges::any_of(spellings, [&](const auto& spelling) { return spelling.isIn(item); });
    }
};

/// What an item must have.
struct Query {
    std::uint64_t characters = 0; ///< the words of one ASCII letter or digit, as bits of characterBit
    std::vector<Word> words;      ///< all others, the one expected least often first

    Query(const std::vector<Spellings>& spelledWords, const ByteFrequencies& frequencies) {
        for (const Spellings& word : spelledWords)
            if (const std::uint64_t bit = word.text.size() == 1 ? characterBit(word.text[0]) : 0)
                characters |= bit;
            else
                words.emplace_back(word, frequencies);
        std::ranges::sort(words, {}, &Word::expectedShare);
    }

    bool hasCharacters(const SearchText& part, std::size_t item) const {
        return (part.characters[item] & characters) == characters;
    }

    /// Whether the item also has the words from `firstWord` on.
    bool matches(const SearchText& part, std::size_t item, std::size_t firstWord) const {
        return hasCharacters(part, item) &&
               std::all_of(words.begin() + static_cast<std::ptrdiff_t>(firstWord), words.end(),
                           [&](const Word& word) { return word.isIn(part[item]); });
    }
};

/// Finds the items of ascending positions in the text. Most are in the current item or one of the next few.
class ItemCursor {
public:
    explicit ItemCursor(const std::vector<std::uint32_t>& starts) : m_starts(starts) {}

    /// Returns the item at `position`, which must not be before the previous one.
    std::size_t itemAt(std::size_t position) {
        for (const std::size_t near = m_item + nearItems; m_item < near; ++m_item)
            if (m_starts[m_item + 1] > position)
                return m_item;
        const auto from = m_starts.begin() + static_cast<std::ptrdiff_t>(m_item);
        m_item =
            static_cast<std::size_t>(std::upper_bound(from, m_starts.end(), position) - m_starts.begin() - 1);
        return m_item;
    }

private:
    static constexpr std::size_t nearItems = 32;

    const std::vector<std::uint32_t>& m_starts;
    std::size_t m_item = 0;
};

/// Returns the items of a part that `spelling` is found in and that match the other words of the query. The
/// whole text is searched at once; after a match the search goes on in the next item.
Indexes itemsWith(const SubstringSearch& spelling, const SearchText& part, const Query& query) {
    Indexes found;
    found.reserve(part.size()); // costs nothing until it is used
    ItemCursor cursor(part.starts);
    spelling.forEachMatch(part.text.view(), [&](std::size_t position) {
        const std::size_t item = cursor.itemAt(position);
        if (query.matches(part, item, 1))
            found.push_back(part.firstItem + static_cast<std::uint32_t>(item));
        return part.starts[item + 1];
    });
    return found;
}

Indexes united(Indexes a, Indexes b) {
    if (a.empty())
        return b;
    Indexes all;
    std::ranges::set_union(a, b, std::back_inserter(all));
    return all;
}

Indexes intersection(std::span<const std::uint32_t> a, const Indexes& b) {
    Indexes both;
    both.reserve(std::min(a.size(), b.size()));
    std::ranges::set_intersection(a, b, std::back_inserter(both));
    return both;
}

/// Returns those of `items`, which are in the part, whose position in the part passes `isMatch`.
Indexes matchesAmong(const auto& items, const SearchText& part, const auto& isMatch) {
    Indexes found;
    found.reserve(items.size());
    std::ranges::copy_if(items, std::back_inserter(found),
                         [&](std::uint32_t item) { return isMatch(item - part.firstItem); });
    return found;
}

/// Returns the items of a part that match the query. Words of one letter or digit are answered by each item's
/// character mask. Of the other words the rarest is searched in the whole text, and the rest only in the
/// items that contain it.
Indexes matchesIn(const SearchText& part, const Query& query) {
    if (query.words.empty())
        return matchesAmong(std::views::iota(part.firstItem, part.end()), part,
                            [&](std::size_t item) { return query.hasCharacters(part, item); });
    Indexes found;
    for (const SubstringSearch& spelling : query.words.front().spellings)
        found = united(std::move(found), itemsWith(spelling, part, query));
    return found;
}

/// Returns the items of a part, of ascending ones.
std::span<const std::uint32_t> itemsOf(const SearchText& part, std::span<const std::uint32_t> items) {
    const auto begin = std::ranges::lower_bound(items, part.firstItem);
    return {begin, std::lower_bound(begin, items.end(), part.end())};
}

/// Returns the items that `matchesIn` returns for each part, the parts searched on several threads.
Indexes matchesInAll(const std::vector<SearchText>& parts, const auto& matchesIn) {
    std::vector<Indexes> found(parts.size());
    forEachInParallel(parts.size(), [&](std::size_t part) { found[part] = matchesIn(parts[part]); });
    if (found.size() == 1)
        return std::move(found.front());
    Indexes all;
    all.reserve(std::accumulate(found.begin(), found.end(), std::size_t{0},
                                [](std::size_t size, const Indexes& each) { return size + each.size(); }));
    for (const Indexes& each : found)
        all.insert(all.end(), each.begin(), each.end());
    return all;
}

/// Items are tested one by one if they are fewer than one of so many; else searching all of the text is
/// faster.
constexpr std::size_t testedShare = 8;

} // namespace

SearchIndex::SearchIndex(std::vector<SearchText> parts) : m_parts(std::move(parts)) {
    for (const SearchText& part : m_parts)
        m_frequencies.add(part.text.view());
}

std::vector<std::uint32_t> SearchIndex::matches(std::string_view searchText) const {
    const Query query(spelledWords(searchText), m_frequencies);
    return matchesInAll(m_parts, [&](const SearchText& part) { return matchesIn(part, query); });
}

std::vector<std::uint32_t> SearchIndex::matches(std::string_view searchText,
                                                const EarlierSearch& earlier) const {
    std::vector<Spellings> words = spelledWords(searchText);
    const std::vector<Spellings> before = spelledWords(earlier.searchText);
    if (!addTo(before, words))
        return matches(searchText);
    removeSame(words, before); // the items found then contain these
    const Query query(words, m_frequencies);
    const bool areFew = earlier.found.size() <= size() / testedShare;
    return matchesInAll(m_parts, [&](const SearchText& part) {
        const auto items = itemsOf(part, earlier.found);
        return areFew
                   ? matchesAmong(items, part, [&](std::size_t item) { return query.matches(part, item, 0); })
                   : intersection(items, matchesIn(part, query));
    });
}

Result<SearchIndex> makeSearchIndex(const ItemList& items, std::size_t partSize) {
    auto parts = makeSearchParts(items, partSize);
    if (!parts)
        return std::unexpected(parts.error());
    return SearchIndex(std::move(*parts));
}

} // namespace kavendra
