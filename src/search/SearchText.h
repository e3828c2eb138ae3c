#pragma once

#include "data/ItemList.h"
#include "base/Result.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Returns `text` as it is compared: in lower case and in Unicode normalisation form C, so that canonically
/// equivalent texts are equal.
std::string folded(std::string_view text);

/// What is searched of every item (title, command, params and keywords joined by a space, folded), in one
/// arena. A line feed follows each item: no word holds one, so none is found across two items.
struct SearchText {
    ByteBuffer text;
    std::vector<std::uint64_t> starts{0}; ///< where each item begins, and the end of the last one
    /// For each item, which ASCII letters and digits stand in it, as bits of characterBit.
    std::vector<std::uint64_t> characters;

    std::size_t size() const { return characters.size(); }
    std::string_view operator[](std::size_t item) const {
        return text.view().substr(starts[item], starts[item + 1] - 1 - starts[item]);
    }
};

/// Folds all items. Fails with the source of the file with which they take more memory than files of that
/// size may (loadLimits::itemMemory). Fails with the source of the largest file when there is not enough
/// memory for the index or for showing the items.
Result<SearchText> makeSearchText(const ItemList& items);

/// Returns the bit of a lower-case ASCII letter or digit in SearchText::characters, 0 for any other byte.
constexpr std::uint64_t characterBit(char byte) {
    if (byte >= 'a' && byte <= 'z')
        return std::uint64_t{1} << (byte - 'a');
    if (byte >= '0' && byte <= '9')
        return std::uint64_t{1} << (26 + byte - '0');
    return 0;
}

/// Returns the bits of all letters and digits in a folded text.
std::uint64_t characterBits(std::string_view text);

} // namespace kavendra
