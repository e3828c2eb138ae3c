#pragma once

#include "search/SearchText.h"
#include "search/SubstringSearch.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kavendra {

/// Answers which items a search text keeps. Made once for a list.
class SearchIndex {
public:
    SearchIndex() = default;
    explicit SearchIndex(SearchText items);

    /// Returns the indexes of the items that contain every word of `searchText`, ascending; all of them when
    /// it has no word. Letter case is disregarded; a Hiragana word is also found in its Katakana spelling.
    std::vector<std::uint32_t> matches(std::string_view searchText) const;

private:
    SearchText items;
    ByteFrequencies frequencies;
};

/// Makes the index of a list. Fails as makeSearchText does.
Result<SearchIndex> makeSearchIndex(const ItemList& items);

} // namespace kavendra
