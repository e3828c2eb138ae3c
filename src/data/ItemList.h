#pragma once

#include "base/ByteBuffer.h"
#include "data/LaunchItem.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kavendra {

/// A stretch of an ItemBlock's text, in bytes.
struct TextSpan {
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
};

/// The four column texts of one row, in the order of requiredColumns.
using ItemRow = std::array<TextSpan, requiredColumns.size()>;

/// What one data file holds: its text, and the rows as spans of it. A row costs no allocation.
struct ItemBlock {
    ByteBuffer text; ///< at most 4 GiB, valid UTF-8
    std::vector<ItemRow> rows;
    std::string source;
    std::size_t fileSize = 0; ///< in bytes; bounds what the items may take (see LoadLimits.h)
    std::size_t xmlCost = 0;  ///< what the file took to parse, as xmlCost has it

    std::string_view value(const ItemRow& row, std::size_t column) const {
        return text.view().substr(row[column].offset, row[column].length);
    }
};

/// All items of one load, in display order; immutable once it is shown. It owns the bytes that the rows are
/// views of: what is kept longer is taken out as a LaunchItem.
class ItemList {
public:
    ItemList();

    void append(ItemBlock block);

    std::size_t size() const;
    bool empty() const { return size() == 0; }

    /// The item at `index`, which is below size().
    LaunchItem operator[](std::size_t index) const;

    /// Returns the text of one column of the item at `index`; valid while the list exists.
    std::string_view value(std::size_t index, ItemColumn column) const;

    UUID id(std::size_t index) const;
    /// The index of the item with that identity, or nothing when it is of another load.
    std::optional<std::size_t> indexOf(const UUID& id) const;

    const std::vector<ItemBlock>& blocks() const { return itemBlocks; }

private:
    const ItemBlock& blockOf(std::size_t index, std::size_t& rowInBlock) const;

    std::vector<ItemBlock> itemBlocks;
    std::vector<std::size_t> blockEnds; ///< for each block, the index behind its last item
    UUID identity;                      ///< of the load; an item's id is this plus its index
};

} // namespace kavendra
