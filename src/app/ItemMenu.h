#pragma once

#include "app/Menu.h"
#include "launch/ItemActions.h"

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// What the menus of the table are made of. `actions` must outlive the menu.
struct ItemMenuSource {
    ItemActions& actions;
    std::string dataDirectory;
    ReportOutcome report; ///< gets how a chosen action on the row ended
    std::function<void()> reload;
    std::function<void()> openDataDirectory;
};

/// Returns the menu of a row. `clickedColumn` is none when it was opened in no column. What is
/// enabled is decided now; what an action acts on, when it is chosen.
Menu itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn, const ItemMenuSource& source);

/// Returns the menu of the table where it has no row.
Menu generalMenu(const ItemMenuSource& source);

} // namespace kavendra
