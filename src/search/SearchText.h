#pragma once

#include "data/ItemList.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Returns `text` in the form in which it is compared: lower case, Unicode normalisation form C, so that
/// canonically equivalent texts are equal.
std::string folded(std::string_view text);

/// A part of the search index: the searched text of some consecutive items in one buffer. The text of an item
/// is title, command, params and keywords, joined by a space and folded. A line feed follows each item; no
/// word contains one, so no match reaches into another item.
struct SearchText {
    std::uint32_t firstItem = 0;          ///< its index in the list
    ByteBuffer text;                      ///< less than 4 GiB, which loadLimits::itemMemory ensures
    std::vector<std::uint32_t> starts{0}; ///< the offset of each item, then the end of the last one
    /// The character mask of each item: which ASCII letters and digits it contains, as bits of characterBit.
    std::vector<std::uint64_t> characters;

    std::size_t size() const { return characters.size(); }
    std::uint32_t end() const { return firstItem + static_cast<std::uint32_t>(size()); }
    /// Returns the text of the item at that position in this part.
    std::string_view operator[](std::size_t position) const {
        return text.view().substr(starts[position], starts[position + 1] - 1 - starts[position]);
    }
};

/// Rows of one block that become one part.
struct SearchTextSource {
    const ItemBlock* block = nullptr;
    std::span<const ItemRow> rows;
    std::uint32_t firstItem = 0; ///< the index of the first row in the list
};

/// Folds the rows. Now and then calls `mayTake` with the memory that the items take so far, as
/// loadLimits::itemMemory counts it, and stops when that returns false. Throws std::bad_alloc.
SearchText makeSearchText(const SearchTextSource& source, const std::function<bool(std::size_t)>& mayTake);

/// Returns the bit of a lower-case ASCII letter or digit in SearchText::characters, 0 for any other byte.
constexpr std::uint64_t characterBit(char byte) {
    if (byte >= 'a' && byte <= 'z')
        return std::uint64_t{1} << (byte - 'a');
    if (byte >= '0' && byte <= '9')
        return std::uint64_t{1} << (26 + byte - '0');
    return 0;
}

} // namespace kavendra
