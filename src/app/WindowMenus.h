#pragma once

#include "app/ContentView.h"
#include "app/ItemMenu.h"
#include "app/SettingsMenu.h"
#include "app/TypedPathMenu.h"
#include "launch/ExcelIntegration.h"

#include <functional>
#include <optional>
#include <string>

namespace kavendra {

/// The menus of the window, each made for the moment at which it is opened. What is chosen from them acts,
/// and reports to the content view.
class WindowMenus {
public:
    /// All three must outlive this, and this every menu.
    WindowMenus(ContentView& contentView, Desktop& desktop, Processes& processes);

    /// Whether the text of the search field names something that exists, so that there is a menu about it.
    bool hasTypedPath() const;
    Menu typedPathMenu();

    /// `clickedColumn` is none when the menu is opened in no column.
    Menu itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn);
    /// For where the table has no row.
    Menu generalMenu();
    /// `chooseDataDirectory` is to let the person choose one, and to call changeDataDirectory with it.
    Menu settingsMenu(std::function<void()> chooseDataDirectory);

    /// Makes another directory the data directory, creating it when it is missing, and loads from it.
    /// Failures are reported; the directory that is in use already changes nothing.
    void changeDataDirectory(const std::string& path);

private:
    ItemMenuSource itemMenuSource();
    ReportOutcome report();
    bool changeSettings(const SettingsEdit& edit);
    void openDirectory(const std::string& path, std::string message);
    void openDataDirectory();

    ContentView& content;
    Launcher launcher;
    ExcelIntegration excel;
    ItemActions itemActions;
    TypedPathActions searchPathActions;
};

} // namespace kavendra
