#pragma once

#include "data/ItemList.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Rules for the selected item. A selection is the identity of an item; the item may be hidden by the filter.
namespace kavendra {

/// The items that the filter keeps. Both references must outlive it.
struct FilteredItems {
    const ItemList& items;
    const std::vector<std::uint32_t>& rows; ///< their indexes in `items`, ascending

    std::size_t size() const { return rows.size(); }
    LaunchItem operator[](std::size_t position) const { return items[rows[position]]; }

    /// Returns the position of the item in the filtered list; nullopt when it is not there.
    std::optional<std::size_t> positionOf(const std::optional<UUID>& id) const;
};

/// Returns `selection` when it is in the filtered list, else the first item.
std::optional<UUID> ensuredSelection(const FilteredItems& filtered, const std::optional<UUID>& selection);

/// Returns the item `offset` positions below the selection, limited to the first and last item. When the
/// selection is not in the filtered list: the last item for a negative offset, else the first.
std::optional<UUID> movedSelection(const FilteredItems& filtered, const std::optional<UUID>& selection,
                                   int offset);

/// Return the first or last item; nullopt when the list is empty.
std::optional<UUID> firstSelection(const FilteredItems& filtered);
std::optional<UUID> lastSelection(const FilteredItems& filtered);

} // namespace kavendra
