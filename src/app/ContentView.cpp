#include "app/ContentView.h"

#include "app/ItemsLoad.h"
#include "app/StatusTexts.h"
#include "config/LogFile.h"
#include "config/SettingsFile.h"
#include "launch/TypedPath.h"

#include <utility>

namespace kavendra {

namespace {

/// How long a launch that was requested before the first items were there is kept.
constexpr std::chrono::seconds launchRequestLifetime{1};

/// A program that runs longer counts as opened.
constexpr std::chrono::seconds programPatience{2};

} // namespace

ContentView::ContentView(Desktop& desktop, Processes& processes, Executor& executor,
                         std::string configurationDirectory, std::string builtinFile)
    : m_desktop(desktop), m_executor(executor), m_configurationDirectory(std::move(configurationDirectory)),
      m_builtinFile(std::move(builtinFile)), m_launcher(desktop, processes, threadSafeLogLine()) {
    m_state.appSettings = defaultSettings(m_configurationDirectory);
    adopt({});
}

void ContentView::start() {
    reloadData();
}

void ContentView::appear() {
    m_hasAppeared = true;
    applyAppearance();
    m_state.startupRegistrationStatus = m_desktop.launchAtLoginStatus();
    changed();
}

void ContentView::reloadData() {
    const ActionNumber number = ++m_lastAction;
    m_loads.drop();
    if (const auto loaded = loadConfiguration(); !loaded)
        return failLoad(loaded.error());
    startLoad(number);
}

Result<void> ContentView::loadConfiguration() {
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
    if (m_hasAppeared)
        applyAppearance();
    if (!m_state.hasResetLogForCurrentLaunch) {
        if (auto reset = resetLog(m_state.appSettings.logDirectoryPath); !reset)
            return reset;
        m_state.hasResetLogForCurrentLaunch = true;
    }
    return {};
}

void ContentView::startLoad(ActionNumber number) {
    const ItemsLoadRequest request{.dataDirectory = m_state.appSettings.dataDirectoryPath,
                                   .includeBuiltinItems = m_state.appSettings.showBuiltinItems,
                                   .builtinFile = m_builtinFile,
                                   .builtinCommand = [&desktop = m_desktop](const std::string& command) {
                                       return desktop.builtinCommand(command);
                                   }};
    m_loads.start([request] { return loadItems(request); },
                  [this, number, directory = request.dataDirectory](ItemsLoad load) {
                      finishLoad(number, std::move(load), directory);
                  });
    if (m_loads.isPending())
        changed();
}

void ContentView::finishLoad(ActionNumber number, ItemsLoad load, const std::string& dataDirectory) {
    for (const std::string& line : load.logLines)
        appendLogLine(line);
    if (!load.items)
        return failLoad(load.items.error());
    m_hasLoaded = true;
    adopt(std::move(*load.items));
    ensureSelection();
    setStatus(number, loadedMessage(m_state.items->list.size(), dataDirectory));
    if (const auto requested = std::exchange(m_launchRequest, std::nullopt);
        requested && std::chrono::steady_clock::now() - *requested < launchRequestLifetime)
        launchSelected();
}

void ContentView::failLoad(const Error& error) {
    m_hasLoaded = true;
    m_launchRequest.reset();
    adopt({});
    m_state.selectedItemID.reset();
    reportFailure(error.description);
}

void ContentView::adopt(LoadedItems loaded) {
    m_state.items = std::make_shared<const LoadedItems>(std::move(loaded));
    setFilteredRows(m_state.items->index.matches(m_state.searchText));
}

void ContentView::setFilteredRows(std::vector<std::uint32_t> rows) {
    m_state.filteredRows = std::make_shared<const std::vector<std::uint32_t>>(std::move(rows));
}

void ContentView::ensureSelection() {
    m_state.selectedItemID = ensuredSelection(filteredItems(), m_state.selectedItemID);
}

void ContentView::setSearchText(std::string text) {
    if (text == m_state.searchText)
        return;
    setFilteredRows(m_state.items->index.matches(
        text, {.searchText = m_state.searchText, .found = *m_state.filteredRows}));
    m_state.searchText = std::move(text);
    m_launchRequest.reset();
    ensureSelection();
    changed();
}

void ContentView::select(const std::optional<UUID>& id) {
    m_state.selectedItemID = id;
    changed();
}

std::optional<LaunchItem> ContentView::selectedItem() const {
    const auto position = filteredItems().positionOf(m_state.selectedItemID);
    return position ? std::optional(filteredItems()[*position]) : std::nullopt;
}

void ContentView::launchSelected() {
    if (!m_hasLoaded)
        m_launchRequest = std::chrono::steady_clock::now();
    else if (const auto item = selectedItem())
        launch(*item);
    else
        setStatus("No item selected");
}

void ContentView::launch(const LaunchItem& item) {
    perform([this, item] { return m_launcher.launch(item); });
}

void ContentView::perform(std::function<ActionOutcome()> action) {
    performStep(std::move(action), [this, number = ++m_lastAction](const ActionOutcome& outcome) {
        if (outcome && outcome->program.valid())
            awaitProgram(number, *outcome);
        else
            finish(number, outcome);
    });
}

void ContentView::finish(ActionNumber number, const ActionOutcome& outcome) {
    if (outcome)
        setStatus(number, outcome->message);
    else
        reportFailure(outcome.error().description);
}

void ContentView::awaitProgram(ActionNumber number, const ActionSuccess& action) {
    const auto hasEnded = [action] {
        return action.program.wait_for(programPatience) == std::future_status::ready;
    };
    ++m_awaitedPrograms;
    runThen(m_executor, hasEnded, [this, number, action](bool ended) {
        --m_awaitedPrograms;
        if (ended)
            return finish(number, outcomeOfProgram(action));
        setStatus(number, action.message);
        runThen(
            m_executor, [action] { return outcomeOfProgram(action); },
            [this](const ActionOutcome& outcome) {
                if (!outcome)
                    reportFailure(outcome.error().description);
            });
    });
}

void ContentView::updateColumnWidth(const std::string& columnIdentifier, double width) {
    auto widths = widthsAfterResize(m_state.appState.columnWidths, columnIdentifier, width);
    if (!widths)
        return;
    LaunchState resized{std::move(*widths)};
    if (const auto written = writeState(m_configurationDirectory, resized); !written)
        return reportFailure(written.error().description);
    m_state.appState = std::move(resized);
    changed();
}

bool ContentView::saveSettings(const LaunchSettings& settings) {
    if (const auto written = writeSettings(m_configurationDirectory, settings); !written) {
        reportFailure(written.error().description);
        return false;
    }
    m_state.appSettings = settings;
    changed();
    return true;
}

void ContentView::applyAppearance() {
    m_desktop.setAppearance(appearance(m_state.appSettings.appearanceMode));
}

void ContentView::requestStartupChange() {
    m_state.pendingStartupRegistrationAction = requestedStartupAction(m_state.startupRegistrationStatus);
    changed();
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
    changed();
}

void ContentView::setStatus(std::string message) {
    setStatus(++m_lastAction, std::move(message));
}

void ContentView::setStatus(ActionNumber number, std::string message) {
    if (number >= m_statusAction) {
        m_statusAction = number;
        m_state.lastActionMessage = std::move(message);
    }
    changed();
}

void ContentView::reportFailure(const std::string& message) {
    m_statusAction = m_lastAction;
    m_state.lastActionMessage = message;
    m_state.errorDialogMessage = message;
    appendLogLine(message);
    changed();
}

void ContentView::report(const ActionOutcome& outcome) {
    finish(++m_lastAction, outcome);
}

void ContentView::dismissErrorDialog() {
    m_state.errorDialogMessage.reset();
    changed();
}

void ContentView::appendLogLine(std::string_view message) {
    if (!appendToLog(m_state.appSettings.logDirectoryPath, message))
        setStatus(std::string(message) + " | Log write failed");
}

LogLine ContentView::threadSafeLogLine() {
    return [this](std::string_view line) {
        m_executor.post([this, text = std::string(line)] { appendLogLine(text); });
    };
}

void ContentView::changed() {
    m_state.isLoading = m_loads.isPending();
    m_state.isActing = m_stepsInProgress + m_awaitedPrograms > 0;
    m_state.prefersReducedMotion = m_desktop.prefersReducedMotion();
    stateChanged();
    askForTypedPath();
}

void ContentView::askForTypedPath() {
    if (m_typedPathQuestions.isPending() && m_askedText == m_state.searchText)
        return;
    m_askedText = m_state.searchText;
    const auto adopt = [this](bool hasTypedPath) {
        if (std::exchange(m_state.hasTypedPath, hasTypedPath) != hasTypedPath)
            stateChanged();
    };
    if (!m_state.searchText.empty())
        return m_typedPathQuestions.start([text = m_askedText] { return typedPathOf(text).has_value(); },
                                          adopt);
    m_typedPathQuestions.drop();
    adopt(false);
}

} // namespace kavendra
