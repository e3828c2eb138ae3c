#include "app/ContentView.h"

#include "app/DataDirectory.h"
#include "app/LoadTexts.h"
#include "config/LogFile.h"
#include "config/SettingsFile.h"

#include <utility>

namespace kavendra {

ContentView::ContentView(Desktop& desktop, Processes& processes, std::string configurationDirectory,
                         std::string builtinFile)
    : desktop(desktop), configurationDirectory(std::move(configurationDirectory)),
      builtinFile(std::move(builtinFile)), launcher(desktop, processes, logLine()) {
    current.appSettings = defaultSettings(this->configurationDirectory);
    adopt({});
}

void ContentView::appear() {
    reloadData();
    // A load that stopped early has not come to these.
    applyAppearance();
    ensureSelection();
    current.startupRegistrationStatus = desktop.launchAtLoginStatus();
    stateChanged();
}

void ContentView::reloadData() {
    if (const auto loaded = load(); !loaded) {
        adopt({});
        current.selectedItemID.reset();
        reportFailure(loaded.error().description);
        return;
    }
    setStatus(loadedMessage(current.items->list.size(), current.appSettings.dataDirectoryPath));
}

Result<void> ContentView::load() {
    if (auto prepared = prepareConfigurationFiles(configurationDirectory); !prepared)
        return prepared;
    auto settings = loadSettings(configurationDirectory);
    if (!settings)
        return std::unexpected(settings.error());
    current.appSettings = std::move(*settings);
    auto state = loadState(configurationDirectory);
    if (!state)
        return std::unexpected(state.error());
    current.appState = std::move(*state);
    applyAppearance();
    if (!current.hasResetLogForCurrentLaunch) {
        if (auto reset = resetLog(current.appSettings.logDirectoryPath); !reset)
            return reset;
        current.hasResetLogForCurrentLaunch = true;
    }
    const std::string& directory = current.appSettings.dataDirectoryPath;
    if (auto ensured = ensureDataDirectory(directory); !ensured)
        return ensured;
    auto items = loadAllItems(directory, current.appSettings.showBuiltinItems, builtinFile, logLine());
    if (!items)
        return std::unexpected(items.error());
    auto index = makeSearchIndex(*items);
    if (!index)
        return std::unexpected(index.error());
    adopt({std::move(*items), std::move(*index)});
    ensureSelection();
    return {};
}

void ContentView::adopt(LoadedItems loaded) {
    current.items = std::make_shared<const LoadedItems>(std::move(loaded));
    filter();
}

void ContentView::filter() {
    current.filteredRows =
        std::make_shared<const std::vector<std::uint32_t>>(current.items->index.matches(current.searchText));
}

void ContentView::ensureSelection() {
    current.selectedItemID = ensuredSelection(filteredItems(), current.selectedItemID);
}

void ContentView::setSearchText(std::string text) {
    if (text == current.searchText)
        return;
    current.searchText = std::move(text);
    filter();
    ensureSelection();
    stateChanged();
}

void ContentView::select(const std::optional<UUID>& id) {
    current.selectedItemID = id;
    stateChanged();
}

std::optional<LaunchItem> ContentView::selectedItem() const {
    const auto position = filteredItems().positionOf(current.selectedItemID);
    return position ? std::optional(filteredItems()[*position]) : std::nullopt;
}

void ContentView::launchSelected() {
    if (const auto item = selectedItem())
        launch(*item);
    else
        setStatus("No item selected");
}

void ContentView::launch(const LaunchItem& item) {
    const auto kind = launcher.launch(item);
    if (kind)
        setStatus("Launched (" + std::string(*kind) + "): " + item.title);
    else
        reportFailure(kind.error().description);
}

void ContentView::updateColumnWidth(const std::string& columnIdentifier, double width) {
    auto widths = widthsAfterResize(current.appState.columnWidths, columnIdentifier, width);
    if (!widths)
        return;
    LaunchState changed{std::move(*widths)};
    if (const auto written = writeState(configurationDirectory, changed); !written)
        return reportFailure(written.error().description);
    current.appState = std::move(changed);
    stateChanged();
}

bool ContentView::saveSettings(const LaunchSettings& settings) {
    if (const auto written = writeSettings(configurationDirectory, settings); !written) {
        reportFailure(written.error().description);
        return false;
    }
    current.appSettings = settings;
    stateChanged();
    return true;
}

void ContentView::applyAppearance() {
    desktop.setAppearance(appearance(current.appSettings.appearanceMode));
}

void ContentView::requestStartupChange() {
    current.pendingStartupRegistrationAction = requestedStartupAction(current.startupRegistrationStatus);
    stateChanged();
}

void ContentView::confirmStartupChange() {
    const auto action = std::exchange(current.pendingStartupRegistrationAction, std::nullopt);
    if (!action)
        return;
    const StartupChange change = changeStartupRegistration(desktop, *action);
    current.startupRegistrationStatus = change.status;
    if (change.message)
        setStatus(*change.message);
    else
        reportFailure(change.message.error().description);
}

void ContentView::cancelStartupChange() {
    current.pendingStartupRegistrationAction.reset();
    stateChanged();
}

void ContentView::setStatus(std::string message) {
    current.lastActionMessage = std::move(message);
    stateChanged();
}

void ContentView::reportFailure(const std::string& message) {
    current.lastActionMessage = message;
    current.errorDialogMessage = message;
    appendLogLine(message);
    stateChanged();
}

void ContentView::report(const ActionOutcome& outcome) {
    if (outcome)
        setStatus(*outcome);
    else
        reportFailure(outcome.error().description);
}

void ContentView::dismissErrorDialog() {
    current.errorDialogMessage.reset();
    stateChanged();
}

void ContentView::appendLogLine(std::string_view message) {
    if (!appendToLog(current.appSettings.logDirectoryPath, message))
        setStatus(std::string(message) + " | Log write failed");
}

LogLine ContentView::logLine() {
    return [this](std::string_view message) { appendLogLine(message); };
}

} // namespace kavendra
