#include "app/ContentView.h"

#include "app/ItemsLoad.h"
#include "config/LogFile.h"
#include "config/SettingsFile.h"
#include "data/DataDirectory.h"

#include <utility>

namespace kavendra {

namespace {

std::string loadedMessage(std::size_t itemCount, const std::string& dataDirectory) {
    if (itemCount == 0)
        return "No launch items found in " + dataDirectory;
    return "Loaded " + std::to_string(itemCount) + " items";
}

} // namespace

ContentView::ContentView(Desktop& desktop, Processes& processes, std::string configurationDirectory,
                         std::string builtinFile)
    : m_desktop(desktop), m_configurationDirectory(std::move(configurationDirectory)),
      m_builtinFile(std::move(builtinFile)),
      m_launcher(desktop, processes, [this](std::string_view line) { appendLogLine(line); }) {
    m_state.appSettings = defaultSettings(m_configurationDirectory);
    adopt({});
}

void ContentView::appear() {
    reloadData();
    // A load that failed may have skipped these two.
    applyAppearance();
    ensureSelection();
    m_state.startupRegistrationStatus = m_desktop.launchAtLoginStatus();
    stateChanged();
}

void ContentView::reloadData() {
    if (const auto loaded = load(); !loaded) {
        adopt({});
        m_state.selectedItemID.reset();
        reportFailure(loaded.error().description);
        return;
    }
    setStatus(loadedMessage(m_state.items->list.size(), m_state.appSettings.dataDirectoryPath));
}

Result<void> ContentView::load() {
    if (auto prepared = prepareConfigurationFiles(m_configurationDirectory); !prepared)
        return prepared;
    auto settings = loadSettings(m_configurationDirectory);
    if (!settings)
        return std::unexpected(settings.error());
    m_state.appSettings = std::move(*settings);
    auto state = loadState(m_configurationDirectory);
    if (!state)
        return std::unexpected(state.error());
    m_state.appState = std::move(*state);
    applyAppearance();
    if (!m_state.hasResetLogForCurrentLaunch) {
        if (auto reset = resetLog(m_state.appSettings.logDirectoryPath); !reset)
            return reset;
        m_state.hasResetLogForCurrentLaunch = true;
    }
    ItemsLoad load = loadItems({.dataDirectory = m_state.appSettings.dataDirectoryPath,
                                .includeBuiltinItems = m_state.appSettings.showBuiltinItems,
                                .builtinFile = m_builtinFile});
    for (const std::string& line : load.logLines)
        appendLogLine(line);
    if (!load.items)
        return std::unexpected(load.items.error());
    adopt(std::move(*load.items));
    ensureSelection();
    return {};
}

void ContentView::adopt(LoadedItems loaded) {
    m_state.items = std::make_shared<const LoadedItems>(std::move(loaded));
    filter();
}

void ContentView::filter() {
    m_state.filteredRows =
        std::make_shared<const std::vector<std::uint32_t>>(m_state.items->index.matches(m_state.searchText));
}

void ContentView::ensureSelection() {
    m_state.selectedItemID = ensuredSelection(filteredItems(), m_state.selectedItemID);
}

void ContentView::setSearchText(std::string text) {
    if (text == m_state.searchText)
        return;
    m_state.searchText = std::move(text);
    filter();
    ensureSelection();
    stateChanged();
}

void ContentView::select(const std::optional<UUID>& id) {
    m_state.selectedItemID = id;
    stateChanged();
}

std::optional<LaunchItem> ContentView::selectedItem() const {
    const auto position = filteredItems().positionOf(m_state.selectedItemID);
    return position ? std::optional(filteredItems()[*position]) : std::nullopt;
}

std::string ContentView::debugSummary() const {
    std::string columns;
    for (const std::string_view column : requiredColumns)
        columns.append(columns.empty() ? "" : ", ").append(column);
    return "CSV columns: " + columns +
           " | Source is added by app | Ignore prefix: " + std::string(ignorePrefix) +
           " | Data dir: " + m_state.appSettings.dataDirectoryPath +
           " | Log dir: " + m_state.appSettings.logDirectoryPath;
}

void ContentView::launchSelected() {
    if (const auto item = selectedItem())
        launch(*item);
    else
        setStatus("No item selected");
}

void ContentView::launch(const LaunchItem& item) {
    report(m_launcher.launch(item));
}

void ContentView::updateColumnWidth(const std::string& columnIdentifier, double width) {
    auto widths = widthsAfterResize(m_state.appState.columnWidths, columnIdentifier, width);
    if (!widths)
        return;
    LaunchState changed{std::move(*widths)};
    if (const auto written = writeState(m_configurationDirectory, changed); !written)
        return reportFailure(written.error().description);
    m_state.appState = std::move(changed);
    stateChanged();
}

bool ContentView::saveSettings(const LaunchSettings& settings) {
    if (const auto written = writeSettings(m_configurationDirectory, settings); !written) {
        reportFailure(written.error().description);
        return false;
    }
    m_state.appSettings = settings;
    stateChanged();
    return true;
}

void ContentView::applyAppearance() {
    m_desktop.setAppearance(appearance(m_state.appSettings.appearanceMode));
}

void ContentView::requestStartupChange() {
    m_state.pendingStartupRegistrationAction = requestedStartupAction(m_state.startupRegistrationStatus);
    stateChanged();
}

void ContentView::confirmStartupChange() {
    const auto action = std::exchange(m_state.pendingStartupRegistrationAction, std::nullopt);
    if (!action)
        return;
    const StartupChange change = changeStartupRegistration(m_desktop, *action);
    m_state.startupRegistrationStatus = change.status;
    report(change.message);
}

void ContentView::cancelStartupChange() {
    m_state.pendingStartupRegistrationAction.reset();
    stateChanged();
}

void ContentView::setStatus(std::string message) {
    m_state.lastActionMessage = std::move(message);
    stateChanged();
}

void ContentView::reportFailure(const std::string& message) {
    m_state.lastActionMessage = message;
    m_state.errorDialogMessage = message;
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
    m_state.errorDialogMessage.reset();
    stateChanged();
}

void ContentView::appendLogLine(std::string_view message) {
    if (!appendToLog(m_state.appSettings.logDirectoryPath, message))
        setStatus(std::string(message) + " | Log write failed");
}

} // namespace kavendra
