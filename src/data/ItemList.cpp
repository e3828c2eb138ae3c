#include "data/ItemList.h"

#include <algorithm>
#include <utility>

namespace kavendra {

namespace {

/// The bits of UUID::low that hold the index; the two above them are the variant of RFC 4122.
constexpr std::uint64_t counterMask = 0x3FFFFFFFFFFFFFFF;

} // namespace

ItemList::ItemList() : m_identity(UUID::random()) {}

void ItemList::append(ItemBlock block) {
    const std::size_t end = size() + block.rows.size();
    m_blocks.push_back(std::move(block));
    m_blockEnds.push_back(end);
}

std::size_t ItemList::size() const {
    return m_blockEnds.empty() ? 0 : m_blockEnds.back();
}

const ItemBlock& ItemList::blockOf(std::size_t index, std::size_t& rowInBlock) const {
    const auto end = std::ranges::upper_bound(m_blockEnds, index);
    const ItemBlock& block = m_blocks[static_cast<std::size_t>(end - m_blockEnds.begin())];
    rowInBlock = index - (*end - block.rows.size());
    return block;
}

LaunchItem ItemList::operator[](std::size_t index) const {
    std::size_t rowInBlock = 0;
    const ItemBlock& block = blockOf(index, rowInBlock);
    const ItemRow& row = block.rows[rowInBlock];
    LaunchItem item;
    item.id = id(index);
    item.source = block.source;
    for (std::size_t column = 0; column < row.size(); ++column)
        item.*itemColumns[column].field = block.value(row, column);
    return item;
}

std::string_view ItemList::value(std::size_t index, ItemColumn column) const {
    std::size_t rowInBlock = 0;
    const ItemBlock& block = blockOf(index, rowInBlock);
    if (column == ItemColumn::source)
        return block.source;
    return block.value(block.rows[rowInBlock], static_cast<std::size_t>(column));
}

UUID ItemList::id(std::size_t index) const {
    return {.high = m_identity.high,
            .low = (m_identity.low & ~counterMask) | ((m_identity.low + index) & counterMask)};
}

std::optional<std::size_t> ItemList::indexOf(const UUID& id) const {
    const std::size_t index = (id.low - m_identity.low) & counterMask;
    if (index >= size() || this->id(index) != id)
        return {};
    return index;
}

} // namespace kavendra
