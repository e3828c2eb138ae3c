#pragma once

#include "config/LaunchAtLogin.h"
#include "config/LaunchSettings.h"
#include "config/StateFile.h"
#include "data/ItemList.h"
#include "launch/ActionOutcome.h"
#include "launch/Launcher.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "search/SearchIndex.h"
#include "search/Selection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// Everything that one load brought: the items, and what the search is answered from.
struct LoadedItems {
    ItemList list;
    SearchIndex index;
};

/// The run-time state of the window. Whoever shows it keeps the two shared parts, which never change, for as
/// long as it shows them; a change of the state puts new ones in their place.
struct ContentViewState {
    std::string searchText;
    std::optional<UUID> selectedItemID;
    std::string lastActionMessage = "No item launched";
    std::shared_ptr<const LoadedItems> items;
    std::optional<std::string> errorDialogMessage; ///< the error dialog is up exactly while this is set
    LaunchSettings appSettings;
    LaunchState appState;
    bool hasResetLogForCurrentLaunch = false;
    StartupRegistrationStatus startupRegistrationStatus = StartupRegistrationStatus::notRegistered;
    /// The confirmation dialog is up exactly while this is set.
    std::optional<StartupRegistrationAction> pendingStartupRegistrationAction;

    /// The rows of `items` that `searchText` keeps.
    std::shared_ptr<const std::vector<std::uint32_t>> filteredRows;
};

/// The window's model: it owns the state, and the order in which things happen to it. What happens is in the
/// folder of each subject; how it looks is up to whoever is told of the changes.
class ContentView {
public:
    /// `configurationDirectory` holds the settings and the state; `builtinFile` is the built-in items' file.
    ContentView(Desktop& desktop, Processes& processes, std::string configurationDirectory,
                std::string builtinFile);

    const ContentViewState& state() const { return current; }

    /// Called after every change of the state.
    std::function<void()> stateChanged = [] {};

    /// Runs the start-up sequence; called once, when the window is first shown.
    void appear();
    /// Reads settings, state and all data files again. A failure is reported and leaves no items.
    void reloadData();

    void setSearchText(std::string text);
    /// Reported as a change even if the selection stays the same, so that its row is scrolled into view.
    void select(const std::optional<UUID>& id);

    FilteredItems filteredItems() const { return {current.items->list, *current.filteredRows}; }
    std::optional<LaunchItem> selectedItem() const;

    void launchSelected();
    void launch(const LaunchItem& item);

    /// Stores the width in points that a person gave a column.
    void updateColumnWidth(const std::string& columnIdentifier, double width);
    /// Writes the settings and then adopts them. Returns false, with the failure reported and the old
    /// settings in force, when they cannot be written.
    bool saveSettings(const LaunchSettings& settings);
    void applyAppearance();

    /// Asks the person to confirm that launch at login is to be switched on, or off when it is enabled.
    void requestStartupChange();
    void confirmStartupChange();
    void cancelStartupChange();

    void setStatus(std::string message);
    /// Shows a failure in the status line and in the error dialog, and writes it to the log.
    void reportFailure(const std::string& message);
    /// Shows how an action ended: a message in the status line, or a failure as reportFailure does.
    void report(const ActionOutcome& outcome);
    void dismissErrorDialog();
    /// Writes one line to the log; when that fails only the status line says so.
    void appendLogLine(std::string_view message);

private:
    Result<void> load();
    void adopt(LoadedItems loaded);
    void filter();
    void ensureSelection();
    LogLine logLine();

    Desktop& desktop;
    std::string configurationDirectory;
    std::string builtinFile;
    Launcher launcher;
    ContentViewState current;
};

} // namespace kavendra
