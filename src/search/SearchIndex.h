#pragma once

#include "data/ItemList.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace kavendra {

/// Answers which items a search text keeps. Made once for a list; holds every item's searched text
/// (title, command, params and keywords joined by a space, in lower case and normalised) in one arena.
class SearchIndex {
public:
    SearchIndex() = default;
    explicit SearchIndex(const ItemList& items);

    /// Returns the indexes of the items that contain every word of `searchText`, ascending; all of them when
    /// it has no word. Letter case is disregarded; a Hiragana word is also found in its Katakana spelling.
    std::vector<std::uint32_t> matches(std::string_view searchText) const;

private:
    ByteBuffer text;
    std::vector<std::uint64_t> starts{0}; ///< where each item's text begins, and the end of the last one
};

} // namespace kavendra
