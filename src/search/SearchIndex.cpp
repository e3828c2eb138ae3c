#include "search/SearchIndex.h"

#include "base/Text.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <string>
#include <utility>

namespace kavendra {

namespace {

using Indexes = std::vector<std::uint32_t>;

/// A word of the query: an item must contain one of its spellings.
struct Word {
    std::vector<SubstringSearch> spellings;

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

Word makeWord(std::string_view text, const ByteFrequencies& frequencies) {
    Word word;
    word.spellings.emplace_back(std::string(text), frequencies);
    std::string katakana = normalized(hiraganaToKatakana(text));
    if (!katakana.empty() && katakana != text)
        word.spellings.emplace_back(std::move(katakana), frequencies);
    return word;
}

struct Query {
    std::uint64_t characters = 0; ///< the words of one ASCII letter or digit, as bits of characterBit
    std::vector<Word> words;      ///< all others, the one expected least often first
};

Query makeQuery(std::string_view searchText, const ByteFrequencies& frequencies) {
    Query query;
    const std::string text = folded(searchText);
    for (const std::string_view word : splitWords(text))
        if (const std::uint64_t bit = word.size() == 1 ? characterBit(word[0]) : 0)
            query.characters |= bit;
        else
            query.words.push_back(makeWord(word, frequencies));
    std::ranges::sort(query.words, {}, &Word::expectedShare);
    return query;
}

/// Finds the items of ascending positions in the text. Most are in the current item or one of the next few.
class ItemCursor {
public:
    explicit ItemCursor(const std::vector<std::uint64_t>& starts) : m_starts(starts) {}

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

    const std::vector<std::uint64_t>& m_starts;
    std::size_t m_item = 0;
};

/// Returns the items that `spelling` is found in and that pass `isMatch`, ascending. The whole text is
/// searched at once; after a match the search goes on in the next item.
Indexes itemsWith(const SubstringSearch& spelling, const SearchText& items, const auto& isMatch) {
    Indexes found;
    ItemCursor cursor(items.starts);
    spelling.forEachMatch(items.text.view(), [&](std::size_t position) {
        const std::size_t item = cursor.itemAt(position);
        if (isMatch(item))
            found.push_back(static_cast<std::uint32_t>(item));
        return items.starts[item + 1];
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

} // namespace

SearchIndex::SearchIndex(SearchText items) : m_items(std::move(items)), m_frequencies(m_items.text.view()) {}

// Words of one letter or digit are answered by each item's character mask. Of the other words the rarest is
// searched in the whole text, and the rest only in the items that contain it.
std::vector<std::uint32_t> SearchIndex::matches(std::string_view searchText) const {
    const Query query = makeQuery(searchText, m_frequencies);
    const auto hasCharacters = [&](std::uint32_t item) {
        return (m_items.characters[item] & query.characters) == query.characters;
    };
    Indexes found;
    if (query.words.empty()) {
        const auto all = std::views::iota(std::uint32_t{0}, static_cast<std::uint32_t>(m_items.size()));
        std::ranges::copy_if(all, std::back_inserter(found), hasCharacters);
        return found;
    }

    const auto hasOtherWords = [&](std::size_t item) {
        return hasCharacters(static_cast<std::uint32_t>(item)) &&
               std::all_of(query.words.begin() + 1, query.words.end(),
                           [&](const Word& word) { return word.isIn(m_items[item]); });
    };
    for (const SubstringSearch& spelling : query.words.front().spellings)
        found = united(std::move(found), itemsWith(spelling, m_items, hasOtherWords));
    return found;
}

Result<SearchIndex> makeSearchIndex(const ItemList& items) {
    auto text = makeSearchText(items);
    if (!text)
        return std::unexpected(text.error());
    return SearchIndex(std::move(*text));
}

} // namespace kavendra
