#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kavendra {

/// One line of a menu. A menu is a list of these, made afresh each time it is opened; who shows it only draws
/// what the entries say.
struct MenuEntry {
    std::string title; ///< English, to be translated; empty for a line between groups of entries
    /// Stands in the place of "%1" in the title and is not translated: a name, say.
    std::string titleArgument = {};
    bool isEnabled = true;
    std::optional<bool> isChecked = {}; ///< whether the check mark is set, for an entry that can have one
    std::vector<MenuEntry> submenu = {};
    std::function<void()> action = {}; ///< none for a submenu and for a line between groups

    bool isSeparator() const { return title.empty(); }
};

using Menu = std::vector<MenuEntry>;

inline MenuEntry menuSeparator() {
    return {.title = {}};
}

} // namespace kavendra
