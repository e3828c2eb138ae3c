#pragma once

#include "app/ItemsLoad.h"
#include "base/Executor.h"
#include "config/LaunchAtLogin.h"
#include "config/LaunchSettings.h"
#include "config/StateFile.h"
#include "launch/Launcher.h"
#include "platform/Desktop.h"
#include "platform/Processes.h"
#include "search/Selection.h"

#include <chrono>
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

    /// Whether `searchText` names an existing file or directory; follows the text when the file system has
    /// answered.
    bool hasTypedPath = false;
    bool isLoading = false; ///< items are being loaded
    bool isActing = false;  ///< an action has not ended yet
    bool prefersReducedMotion = false;
};

/// The window's model: owns the state and decides the order of its changes. Rendering is the observer's job.
/// Use it on the window's thread. Data files and whatever actions need from the file system are accessed on
/// other threads: the state changes when the result is there. Settings, state and log are read and written at
/// once, because they are small and local.
class ContentView {
public:
    /// `configurationDirectory` holds the settings and the state; `builtinFile` is the data file of the
    /// built-in items. `desktop`, `processes` and `executor` must outlive this. This must outlive the tasks
    /// that `executor` runs on the window's thread.
    ContentView(Desktop& desktop, Processes& processes, Executor& executor,
                std::string configurationDirectory, std::string builtinFile);

    const ContentViewState& state() const { return m_state; }

    /// Called after every change of the state.
    std::function<void()> stateChanged = [] {};

    /// Reads settings and state, empties the log and starts the first load of items. To be called once; needs
    /// no window system.
    void start();
    /// Applies the appearance and asks for launch at login. To be called once, after start(), when there is a
    /// window system.
    void appear();
    /// Reads settings and state again and starts a load of all data files. The items stay until the load has
    /// ended. After a failure, which is reported, there are none. Of several loads only the newest counts.
    void reloadData();

    void setSearchText(std::string text);
    /// Calls stateChanged even if the selection stays the same, so that the item is scrolled into view.
    void select(const std::optional<UUID>& id);

    FilteredItems filteredItems() const { return {m_state.items->list, *m_state.filteredRows}; }
    std::optional<LaunchItem> selectedItem() const;

    /// Launches the selected item. Before the first items are there, the request is kept for a second, unless
    /// the search text changes.
    void launchSelected();
    void launch(const LaunchItem& item);

    /// Runs an action on another thread and reports its outcome. A program that it waits for and that still
    /// runs after two seconds counts as success; a later failure is reported too. A success does not replace
    /// the status of an action that was started later.
    void perform(std::function<ActionOutcome()> action);
    /// Runs `work()` on another thread as a part of an action, then `finish(result)` on this one, which must
    /// change the state.
    template <typename Work, typename Finish>
    void performStep(Work work, Finish finish) {
        ++m_stepsInProgress;
        changed();
        runThen(m_executor, std::move(work), [this, finish = std::move(finish)](auto result) {
            --m_stepsInProgress;
            finish(std::move(result));
        });
    }
    /// Whether an action was chosen that has not been carried out yet.
    bool hasStepsInProgress() const { return m_stepsInProgress > 0; }

    /// Stores the width, in points, that the person gave to a column.
    void updateColumnWidth(const std::string& columnIdentifier, double width);
    /// Writes the settings and then adopts them. When they cannot be written, the failure is reported, the
    /// old settings stay, and false is returned.
    bool saveSettings(const LaunchSettings& settings);
    void applyAppearance();
    /// See Desktop::readText.
    void readText(Clipboard clipboard, std::function<void(const std::string&)> received) {
        m_desktop.readText(clipboard, std::move(received));
    }

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
    /// Returns a function that calls appendLogLine and may be called on any thread.
    LogLine threadSafeLogLine();

private:
    /// Identifies an action or a load; increases with time.
    using ActionNumber = std::uint64_t;

    Result<void> loadConfiguration();
    void startLoad(ActionNumber number);
    void finishLoad(ActionNumber number, ItemsLoad load, const std::string& dataDirectory);
    void failLoad(const Error& error);
    void adopt(LoadedItems loaded);
    void setFilteredRows(std::vector<std::uint32_t> rows);
    void ensureSelection();
    void changed();
    void askForTypedPath();
    void finish(ActionNumber number, const ActionOutcome& outcome);
    void awaitProgram(ActionNumber number, const ActionSuccess& action);
    void setStatus(ActionNumber number, std::string message);

    Desktop& m_desktop;
    Executor& m_executor;
    std::string m_configurationDirectory;
    std::string m_builtinFile;
    Launcher m_launcher;
    NewestRequest m_loads{m_executor};
    NewestRequest m_typedPathQuestions{m_executor};
    std::string m_askedText; ///< what the newest of these questions is about
    ActionNumber m_lastAction = 0;
    ActionNumber m_statusAction = 0; ///< the action that the status message is about
    int m_stepsInProgress = 0;
    int m_awaitedPrograms = 0; ///< started less than programPatience ago
    bool m_hasAppeared = false;
    bool m_hasLoaded = false; ///< the first load has ended
    /// When an item was to be launched before the first load has ended.
    std::optional<std::chrono::steady_clock::time_point> m_launchRequest;
    ContentViewState m_state;
};

} // namespace kavendra
