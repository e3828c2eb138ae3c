#pragma once

#include "search/SearchParts.h"
#include "search/SubstringSearch.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kavendra {

/// A search in the same index, whose result may make the next one shorter.
struct EarlierSearch {
    std::string_view searchText;
    std::span<const std::uint32_t> found; ///< what `matches` has returned for it
};

/// Finds the items that contain the words of a search text. Created once for each item list.
class SearchIndex {
public:
    SearchIndex() = default;
    explicit SearchIndex(std::vector<SearchText> parts);

    /// Returns the indexes of the items that contain every word of `searchText`, ascending; all of them when
    /// it has no word. Ignores letter case; a Hiragana word also matches its Katakana spelling. If the text
    /// only adds to the words of an earlier one, only the new and longer words are searched, and only the
    /// items found then can match.
    std::vector<std::uint32_t> matches(std::string_view searchText) const;
    std::vector<std::uint32_t> matches(std::string_view searchText, const EarlierSearch& earlier) const;

private:
    std::size_t size() const { return m_parts.empty() ? 0 : m_parts.back().end(); }

    std::vector<SearchText> m_parts;
    ByteFrequencies m_frequencies;
};

/// Creates the index of a list. Fails as makeSearchParts does.
Result<SearchIndex> makeSearchIndex(const ItemList& items, std::size_t partSize = searchPartSize);

} // namespace kavendra
