#include "search/Selection.h"

#include <algorithm>

namespace kavendra {

namespace {

std::optional<UUID> selectionAt(const FilteredItems& filtered, std::size_t position) {
    if (filtered.size() == 0)
        return std::nullopt;
    return filtered.items.id(filtered.rows[position]);
}

} // namespace

std::optional<std::size_t> FilteredItems::positionOf(const std::optional<UUID>& id) const {
    const auto index = id ? items.indexOf(*id) : std::nullopt;
    if (!index)
        return std::nullopt;
    const auto row =
        std::ranges::lower_bound(rows, *index, {}, [](std::uint32_t each) { return std::size_t{each}; });
    if (row == rows.end() || *row != *index)
        return std::nullopt;
    return static_cast<std::size_t>(row - rows.begin());
}

std::optional<UUID> ensuredSelection(const FilteredItems& filtered, const std::optional<UUID>& selection) {
    return filtered.positionOf(selection) ? selection : firstSelection(filtered);
}

std::optional<UUID> movedSelection(const FilteredItems& filtered, const std::optional<UUID>& selection,
                                   int offset) {
    const auto position = filtered.positionOf(selection);
    if (!position)
        return offset < 0 ? lastSelection(filtered) : firstSelection(filtered);
    const auto last = static_cast<std::ptrdiff_t>(filtered.size()) - 1;
    const auto moved = static_cast<std::ptrdiff_t>(*position) + offset;
    return selectionAt(filtered, static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(moved, 0, last)));
}

std::optional<UUID> firstSelection(const FilteredItems& filtered) {
    return selectionAt(filtered, 0);
}

std::optional<UUID> lastSelection(const FilteredItems& filtered) {
    return selectionAt(filtered, filtered.size() - 1);
}

} // namespace kavendra
