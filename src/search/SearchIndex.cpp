#include "search/SearchIndex.h"

#include "base/Text.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <string>
#include <utility>

namespace kavendra {

namespace {

/// A word of the query: an item must contain one of its spellings.
struct WordGroup {
    std::vector<SubstringSearch> spellings;
    std::uint64_t characters = 0; ///< the letters and digits that every spelling holds
    bool isOneCharacter = false;  ///< whether `characters` says all

    double rarity() const {
        double sum = 0;
        for (const SubstringSearch& spelling : spellings)
            sum += spelling.rarity();
        return sum;
    }

    bool isIn(std::string_view item) const {
        return isOneCharacter ||
               std::ranges::any_of(spellings, [&](const auto& spelling) { return spelling.isIn(item); });
    }
};

WordGroup makeGroup(std::string_view word, const ByteFrequencies& frequencies) {
    WordGroup group;
    group.spellings.emplace_back(std::string(word), frequencies);
    group.characters = characterBits(word);
    group.isOneCharacter = word.size() == 1 && group.characters != 0;
    std::string katakana = normalized(hiraganaToKatakana(word));
    if (!katakana.empty() && katakana != word) {
        group.characters &= characterBits(katakana);
        group.spellings.emplace_back(std::move(katakana), frequencies);
    }
    return group;
}

/// The words of a query, the one to search for first in front.
std::vector<WordGroup> makeGroups(std::string_view searchText, const ByteFrequencies& frequencies) {
    const std::string query = folded(searchText);
    std::vector<WordGroup> groups;
    for (const std::string_view word : splitWords(query))
        groups.push_back(makeGroup(word, frequencies));
    std::ranges::sort(groups, {},
                      [](const WordGroup& group) { return std::pair(group.isOneCharacter, group.rarity()); });
    return groups;
}

/// Follows ascending positions in the text through its items.
class ItemCursor {
public:
    explicit ItemCursor(const std::vector<std::uint64_t>& itemStarts) : starts(itemStarts) {}

    /// Returns the item that holds `position`, which is not before the last one asked for.
    std::size_t itemAt(std::size_t position) {
        for (unsigned near = 0; near < 8; ++near) {
            if (starts[item + 1] > position)
                return item;
            ++item;
        }
        std::size_t step = 8;
        while (item + step < starts.size() && starts[item + step] <= position)
            step *= 2;
        const auto low = starts.begin() + static_cast<std::ptrdiff_t>(item);
        const auto high = starts.begin() + static_cast<std::ptrdiff_t>(std::min(item + step, starts.size()));
        item = static_cast<std::size_t>(std::upper_bound(low, high, position) - starts.begin()) - 1;
        return item;
    }

private:
    const std::vector<std::uint64_t>& starts;
    std::size_t item = 0;
};

std::vector<std::uint32_t> merged(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    std::vector<std::uint32_t> both;
    std::ranges::set_union(a, b, std::back_inserter(both));
    return both;
}

} // namespace

SearchIndex::SearchIndex(SearchText text) : items(std::move(text)), frequencies(items.text.view()) {}

std::vector<std::uint32_t> SearchIndex::matches(std::string_view searchText) const {
    std::vector<std::uint32_t> found;
    const std::vector<WordGroup> groups = makeGroups(searchText, frequencies);
    if (groups.empty()) {
        found.resize(items.size());
        std::iota(found.begin(), found.end(), 0);
        return found;
    }

    std::uint64_t characters = 0;
    for (const WordGroup& group : groups)
        characters |= group.characters;
    const auto hasCharacters = [&](std::size_t item) {
        return (items.characters[item] & characters) == characters;
    };
    if (groups.front().isOneCharacter) {
        for (std::size_t item = 0; item < items.size(); ++item)
            if (hasCharacters(item))
                found.push_back(static_cast<std::uint32_t>(item));
        return found;
    }

    const auto hasOtherWords = [&](std::size_t item) {
        return hasCharacters(item) && std::all_of(groups.begin() + 1, groups.end(),
                                                  [&](const auto& group) { return group.isIn(items[item]); });
    };
    for (const SubstringSearch& spelling : groups.front().spellings) {
        std::vector<std::uint32_t> more;
        ItemCursor cursor(items.starts);
        spelling.forEachMatch(items.text.view(), [&](std::size_t position) {
            const std::size_t item = cursor.itemAt(position);
            if (hasOtherWords(item))
                more.push_back(static_cast<std::uint32_t>(item));
            return items.starts[item + 1];
        });
        found = found.empty() ? std::move(more) : merged(found, more);
    }
    return found;
}

Result<SearchIndex> makeSearchIndex(const ItemList& items) {
    auto text = makeSearchText(items);
    if (!text)
        return std::unexpected(text.error());
    return SearchIndex(std::move(*text));
}

} // namespace kavendra
