#pragma once

#include "app/ItemsLoad.h"
#include "config/LaunchAtLogin.h"
#include "config/LaunchSettings.h"
#include "config/StateFile.h"
#include "launch/Launcher.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "search/Selection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

/// The run-time state of the window. The two shared parts are immutable and replaced when they change; a view
/// keeps the ones that it shows.
struct ContentViewState {
    std::string searchText;
    std::optional<UUID> selectedItemID;
    std::string lastActionMessage = "No item launched";
    std::shared_ptr<const LoadedItems> items;
    std::optional<std::string> errorDialogMessage; ///< the error dialog is open exactly while this is set
    LaunchSettings appSettings;
    LaunchState appState;
    bool hasResetLogForCurrentLaunch = false;
    StartupRegistrationStatus startupRegistrationStatus = StartupRegistrationStatus::notRegistered;
    /// The confirmation dialog is open exactly while this is set.
    std::optional<StartupRegistrationAction> pendingStartupRegistrationAction;

    /// Indexes of the `items` that match `searchText`.
    std::shared_ptr<const std::vector<std::uint32_t>> filteredRows;
};

/// The window's model: owns the state and decides the order of its changes. Rendering is the observer's job.
class ContentView {
public:
    /// `configurationDirectory` holds the settings and the state; `builtinFile` is the data file of the
    /// built-in items. `desktop` and `processes` must outlive this.
    ContentView(Desktop& desktop, Processes& processes, std::string configurationDirectory,
                std::string builtinFile);

    const ContentViewState& state() const { return m_state; }

    /// Called after every change of the state.
    std::function<void()> stateChanged = [] {};

    /// Loads everything at the start; to be called once, when the window is first shown.
    void appear();
    /// Reads settings, state and all data files again. After a failure, which is reported, there are no
    /// items.
    void reloadData();

    void setSearchText(std::string text);
    /// Calls stateChanged even if the selection stays the same, so that the item is scrolled into view.
    void select(const std::optional<UUID>& id);

    FilteredItems filteredItems() const { return {m_state.items->list, *m_state.filteredRows}; }
    std::optional<LaunchItem> selectedItem() const;

    /// The line below the table with the rules for data files and the two directories.
    std::string debugSummary() const;

    void launchSelected();
    void launch(const LaunchItem& item);

    /// Stores the width, in points, that the person gave to a column.
    void updateColumnWidth(const std::string& columnIdentifier, double width);
    /// Writes the settings and then adopts them. When they cannot be written, the failure is reported, the
    /// old settings stay, and false is returned.
    bool saveSettings(const LaunchSettings& settings);
    void applyAppearance();

    /// Asks the person to confirm that launch at login is disabled if it is enabled, else enabled.
    void requestStartupChange();
    void confirmStartupChange();
    void cancelStartupChange();

    void setStatus(std::string message);
    /// Shows a failure in the status line and in the error dialog, and writes it to the log.
    void reportFailure(const std::string& message);
    /// Shows the message in the status line, or reports the failure.
    void report(const ActionOutcome& outcome);
    void dismissErrorDialog();
    /// Writes one line to the log. A failure appears only in the status message.
    void appendLogLine(std::string_view message);

private:
    Result<void> load();
    void adopt(LoadedItems loaded);
    void filter();
    void ensureSelection();

    Desktop& m_desktop;
    std::string m_configurationDirectory;
    std::string m_builtinFile;
    Launcher m_launcher;
    ContentViewState m_state;
};

} // namespace kavendra
