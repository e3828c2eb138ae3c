#pragma once

#include "base/Result.h"
#include "data/ItemList.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Returns `text` in the form in which it is compared: lower case, Unicode normalisation form C, so that
/// canonically equivalent texts are equal.
std::string folded(std::string_view text);

/// The searched text of all items in one buffer: title, command, params and keywords, joined by a space and
/// folded. A line feed follows each item; no word contains one, so no match reaches into another item.
struct SearchText {
    ByteBuffer text;
    std::vector<std::uint64_t> starts{0}; ///< the offset of each item, then the end of the last one
    /// The character mask of each item: which ASCII letters and digits it contains, as bits of characterBit.
    std::vector<std::uint64_t> characters;

    std::size_t size() const { return characters.size(); }
    std::string_view operator[](std::size_t item) const {
        return text.view().substr(starts[item], starts[item + 1] - 1 - starts[item]);
    }
};

/// Folds all items. Fails with the name of the first file with which the items take more memory than
/// loadLimits::itemMemory allows for the files so far. Fails with the name of the largest file when there is
/// not enough memory for the index or for showing the items.
Result<SearchText> makeSearchText(const ItemList& items);

/// Returns the bit of a lower-case ASCII letter or digit in SearchText::characters, 0 for any other byte.
constexpr std::uint64_t characterBit(char byte) {
    if (byte >= 'a' && byte <= 'z')
        return std::uint64_t{1} << (byte - 'a');
    if (byte >= '0' && byte <= '9')
        return std::uint64_t{1} << (26 + byte - '0');
    return 0;
}

} // namespace kavendra
