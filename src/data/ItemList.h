#pragma once

#include "base/ByteBuffer.h"
#include "data/LaunchItem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kavendra {

/// A range of an ItemBlock's text, in bytes.
struct TextSpan {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
};

/// The four column texts of one row, in the order of requiredColumns.
using ItemRow = std::array<TextSpan, requiredColumns.size()>;

/// The items of one data file: its text, and the rows as spans of it, so that a row needs no allocation.
struct ItemBlock {
    ByteBuffer text; ///< at most 4 GiB, valid UTF-8
    std::vector<ItemRow> rows;
    std::string source;
    std::size_t fileSize = 0; ///< in bytes; limits the memory of the items (see LoadLimits.h)
    std::size_t xmlCost = 0;  ///< of parsing the file; see xmlCost()

    std::string_view value(const ItemRow& row, std::size_t column) const {
        return text.view().substr(row[column].offset, row[column].length);
    }
};

/// All items of one load, in display order; immutable once it is shown. It owns the texts; copy an item as a
/// LaunchItem to keep it longer.
class ItemList {
public:
    ItemList();

    void append(ItemBlock block);

    std::size_t size() const;
    bool empty() const { return size() == 0; }

    /// Returns a copy of the item at `index`, which is below size().
    LaunchItem operator[](std::size_t index) const;

    /// Returns the text of one column of the item at `index`; valid while the list exists.
    std::string_view value(std::size_t index, ItemColumn column) const;

    /// Returns the identity of the item at `index`: that of the load plus the index.
    UUID id(std::size_t index) const;
    /// Returns the index of the item with that identity, nothing if it is of another load.
    std::optional<std::size_t> indexOf(const UUID& id) const;

    const std::vector<ItemBlock>& blocks() const { return m_blocks; }

private:
    const ItemBlock& blockOf(std::size_t index, std::size_t& rowInBlock) const;

    std::vector<ItemBlock> m_blocks;
    std::vector<std::size_t> m_blockEnds; ///< for each block, the index after its last item
    UUID m_identity;                      ///< of the load
};

} // namespace kavendra
