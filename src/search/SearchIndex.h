#pragma once

#include "search/SearchText.h"
#include "search/SubstringSearch.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kavendra {

/// Finds the items that contain the words of a search text. Created once for each item list.
class SearchIndex {
public:
    SearchIndex() = default;
    explicit SearchIndex(SearchText items);

    /// Returns the indexes of the items that contain every word of `searchText`, ascending; all of them when
    /// it has no word. Ignores letter case; a Hiragana word also matches its Katakana spelling.
    std::vector<std::uint32_t> matches(std::string_view searchText) const;

private:
    SearchText m_items;
    ByteFrequencies m_frequencies;
};

/// Creates the index of a list. Fails as makeSearchText does.
Result<SearchIndex> makeSearchIndex(const ItemList& items);

} // namespace kavendra
