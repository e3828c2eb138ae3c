#pragma once

#include "data/LaunchItem.h"
#include "launch/Launcher.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// What of an item goes to the clipboard, in menu order.
enum class LaunchItemCopyAction {
    commandToExecute, ///< command and params as typed in a shell
    cellValue,        ///< the text of the clicked cell
    row               ///< all fields, separated by tabs
};
inline constexpr std::array allCopyActions{LaunchItemCopyAction::commandToExecute,
                                           LaunchItemCopyAction::cellValue, LaunchItemCopyAction::row};

const char* menuTitle(LaunchItemCopyAction action);

/// Returns the text for the clipboard, empty when there is nothing to copy.
std::string copyTextOf(const LaunchItem& item, std::optional<ItemColumn> clickedColumn,
                       LaunchItemCopyAction action);

/// Returns the directory that contains the path in the params, if their column was clicked and the path
/// exists, else the directory that contains the path in the command; nothing when that does not exist.
std::optional<std::string> parentDirectoryOf(const LaunchItem& item, std::optional<ItemColumn> clickedColumn);

/// Returns the path of the data file that the item comes from, nothing when it does not exist.
std::optional<std::string> sourceFileOf(const LaunchItem& item, std::string_view dataDirectory);

/// The actions of an item's menu. Each reports a status message when there is nothing to act on. They may be
/// called on any thread, at the same time.
class ItemActions {
public:
    /// Both must outlive this.
    ItemActions(Desktop& desktop, Launcher& launcher) : m_desktop(desktop), m_launcher(launcher) {}

    ActionOutcome copy(const LaunchItem& item, std::optional<ItemColumn> clickedColumn,
                       LaunchItemCopyAction action);
    ActionOutcome openParentDirectory(const LaunchItem& item, std::optional<ItemColumn> clickedColumn);
    ActionOutcome openSourceFile(const LaunchItem& item, std::string_view dataDirectory);

private:
    Desktop& m_desktop;
    Launcher& m_launcher;
};

} // namespace kavendra
