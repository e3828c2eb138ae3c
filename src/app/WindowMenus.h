#pragma once

#include "app/ContentView.h"
#include "app/Menu.h"
#include "launch/ExcelIntegration.h"
#include "launch/ItemActions.h"
#include "launch/TypedPath.h"

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// All menus of the window. A menu is made each time it is opened: the enabled states are those of that
/// moment. An entry whose state is unknown after a tenth of a second, because a file system does not answer,
/// is enabled. An action looks up its target again when it is chosen, and reports to the content view.
class WindowMenus {
public:
    /// `content`, `desktop`, `processes` and `executor` must outlive this, and this must outlive every menu
    /// and action.
    WindowMenus(ContentView& content, Desktop& desktop, Processes& processes, Executor& executor,
                MacTools tools = macTools());

    Menu typedPathMenu();

    /// The menu of an item. `clickedColumn` is none when the menu is opened outside the columns.
    Menu itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn);
    /// The menu of the table where it has no item.
    Menu generalMenu();
    /// The menu of the settings button. `chooseDataDirectory` asks the person for a directory and passes it
    /// to changeDataDirectory.
    Menu settingsMenu(std::function<void()> chooseDataDirectory);

    /// Returns the data directory; the home directory when it is none or does not answer within a tenth of a
    /// second.
    std::string directoryToChooseFrom() const;
    /// Creates the directory when it does not exist, on another thread, makes it the data directory and
    /// reloads. Failures are reported. No-op if the directory is unchanged.
    void changeDataDirectory(const std::string& path);

private:
    const LaunchSettings& settings() const { return m_content.state().appSettings; }
    MenuEntry entry(const char* title, std::function<ActionOutcome()> action, MenuQuestion question = {});
    Menu copyMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn);
    Menu excelMenu(const MenuQuestion& question, const std::function<ActionOutcome(ExcelOpenMode)>& open);
    void addConfiguredActions(Menu& menu, SearchPathActionTargetType type, const char* title);
    MenuEntry toggle(const Setting& setting);
    Menu appearanceMenu();
    MenuEntry dataDirectoryEntry();
    template <typename Value>
    bool change(Value LaunchSettings::* member, Value value);

    ContentView& m_content;
    Executor& m_executor;
    Launcher m_launcher;
    ExcelIntegration m_excel;
    ItemActions m_itemActions;
    TypedPathActions m_typedPathActions;
};

} // namespace kavendra
