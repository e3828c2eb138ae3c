#pragma once

#include "data/ItemList.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Which of the filtered items is selected. A filtered list is the ascending indexes of its items in `items`;
/// a selection is the identity of an item, which need not be among them.
namespace kavendra {

struct FilteredItems {
    const ItemList& items;
    const std::vector<std::uint32_t>& rows;

    std::size_t size() const { return rows.size(); }
    LaunchItem operator[](std::size_t position) const { return items[rows[position]]; }

    /// Returns where the item with that identity stands in the filtered list, nothing when it is hidden.
    std::optional<std::size_t> positionOf(const std::optional<UUID>& id) const;
};

/// Returns the selection to keep: the same one while it is among the filtered items, else the first of them.
std::optional<UUID> ensuredSelection(const FilteredItems& filtered, const std::optional<UUID>& selection);

/// Returns the selection `offset` rows further down, stopping at either end. Without a selection among the
/// filtered items a negative offset gives the last, any other the first.
std::optional<UUID> movedSelection(const FilteredItems& filtered, const std::optional<UUID>& selection,
                                   int offset);

std::optional<UUID> firstSelection(const FilteredItems& filtered);
std::optional<UUID> lastSelection(const FilteredItems& filtered);

} // namespace kavendra
