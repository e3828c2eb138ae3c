#include "search/SearchIndex.h"

#include "platform/Text.h"

#include <algorithm>
#include <numeric>
#include <string>

namespace kavendra {

namespace {

/// Lower-casing can undo the normal form, so it is made again.
std::string folded(std::string_view text) {
    return normalized(lowercased(normalized(text)));
}

/// The spellings of one word of which an item must contain one.
std::vector<std::string> spellings(std::string_view word) {
    std::vector<std::string> group{std::string(word)};
    std::string katakana = normalized(hiraganaToKatakana(word));
    if (!katakana.empty() && katakana != word)
        group.push_back(std::move(katakana));
    return group;
}

} // namespace

SearchIndex::SearchIndex(const ItemList& items) {
    starts.reserve(items.size() + 1);
    for (std::size_t index = 0; index < items.size(); ++index) {
        for (std::size_t column = 0; column < requiredColumns.size(); ++column) {
            text.append(column > 0 ? " " : "");
            text.append(folded(items.value(index, column)));
        }
        text.append("\n");
        starts.push_back(text.size());
    }
}

std::vector<std::uint32_t> SearchIndex::matches(std::string_view searchText) const {
    std::vector<std::uint32_t> found(starts.size() - 1);
    std::iota(found.begin(), found.end(), 0);
    const std::string query = folded(searchText);
    for (const std::string_view word : splitWords(query)) {
        const std::vector<std::string> group = spellings(word);
        std::erase_if(found, [&](std::uint32_t index) {
            const std::string_view haystack =
                text.view().substr(starts[index], starts[index + 1] - starts[index]);
            return std::ranges::none_of(
                group, [&](const std::string& spelling) { return haystack.contains(spelling); });
        });
    }
    return found;
}

} // namespace kavendra
