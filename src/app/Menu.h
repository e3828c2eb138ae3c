#pragma once

#include "base/TranslatableText.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kavendra {

/// An entry of a menu: an action, a submenu or a separator.
struct MenuEntry {
    std::string title;              ///< English, to be translated; empty for a separator
    std::string titleArgument = {}; ///< replaces "%1" in the title; not translated
    bool isEnabled = true;
    std::optional<bool> isChecked = {}; ///< state of the check mark; none for an entry without one
    std::vector<MenuEntry> submenu = {};
    std::function<void()> action = {}; ///< none for a submenu and a separator

    bool isSeparator() const { return title.empty(); }
};

using Menu = std::vector<MenuEntry>;

inline MenuEntry menuSeparator() {
    return {.title = {}};
}

} // namespace kavendra
