#pragma once

#include "app/Menu.h"

#include <gtest/gtest.h>

#include <string>

namespace kavendra {

inline std::string titleOf(const MenuEntry& entry) {
    std::string title = entry.title;
    if (const std::size_t place = title.find("%1"); place != std::string::npos)
        title.replace(place, 2, entry.titleArgument);
    return title;
}

/// Returns a menu as one line: entries separated by ", ", disabled ones in parentheses, " *" after a checked
/// one, a submenu in brackets after its title, "-" for a separator.
inline std::string menuText(const Menu& menu) {
    std::string text;
    for (const MenuEntry& entry : menu) {
        if (!text.empty())
            text += ", ";
        const std::string title = titleOf(entry) + (entry.isChecked.value_or(false) ? " *" : "");
        if (entry.isSeparator())
            text += "-";
        else if (!entry.submenu.empty())
            text += title + " [" + menuText(entry.submenu) + "]";
        else
            text += entry.isEnabled ? title : "(" + title + ")";
    }
    return text;
}

/// Returns the entry with that title, also one of a submenu, whether enabled or not; null if there is none.
inline const MenuEntry* findEntry(const Menu& menu, const std::string& title) {
    for (const MenuEntry& entry : menu) {
        if (!entry.isSeparator() && titleOf(entry) == title && entry.action)
            return &entry;
        if (const MenuEntry* found = findEntry(entry.submenu, title))
            return found;
    }
    return nullptr;
}

/// Runs the action of the entry with that title, also of a disabled one.
inline void choose(const Menu& menu, const std::string& title) {
    if (const MenuEntry* entry = findEntry(menu, title))
        entry->action();
    else
        ADD_FAILURE() << "no entry " << title;
}

} // namespace kavendra
