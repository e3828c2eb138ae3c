#pragma once

#include "base/Executor.h"
#include "base/TranslatableText.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kavendra {

/// Whether the target of an entry exists. May block, so it is asked on another thread. Entries can share one.
using MenuQuestion = std::shared_ptr<const std::function<bool()>>;

/// An entry of a menu: an action, a submenu or a separator.
struct MenuEntry {
    std::string title;              ///< English, to be translated; empty for a separator
    std::string titleArgument = {}; ///< replaces "%1" in the title; not translated
    bool isEnabled = true;
    std::optional<bool> isChecked = {}; ///< state of the check mark; none for an entry without one
    std::vector<MenuEntry> submenu = {};
    std::string shortcut = {};         ///< shown: the key of the window that does the same, as "F5"
    std::function<void()> action = {}; ///< none for a submenu and a separator
    MenuQuestion question = {};        ///< its answer becomes isEnabled; see enableByQuestions

    bool isSeparator() const { return title.empty(); }
};

using Menu = std::vector<MenuEntry>;

inline MenuEntry menuSeparator() {
    return {.title = {}};
}

/// How long a menu waits for the answers to its questions.
inline constexpr std::chrono::milliseconds menuPatience{100};

/// Asks the questions of all entries, also of submenus, at the same time and enables the entries by the
/// answers. An entry whose question is not answered within a tenth of a second is enabled.
void enableByQuestions(Menu& menu, Executor& executor);

} // namespace kavendra
