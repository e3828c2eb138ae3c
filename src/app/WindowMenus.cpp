#include "app/WindowMenus.h"

#include "launch/TypedPath.h"
#include "platform/Files.h"

namespace kavendra {

WindowMenus::WindowMenus(ContentView& contentView, Desktop& desktop, Processes& processes)
    : content(contentView),
      launcher(desktop, processes, [this](std::string_view line) { content.appendLogLine(line); }),
      excel(launcher), itemActions(desktop, launcher, excel),
      searchPathActions(desktop, processes, launcher) {}

bool WindowMenus::hasTypedPath() const {
    return typedPathOf(content.state().searchText).has_value();
}

Menu WindowMenus::typedPathMenu() {
    const ContentViewState& state = content.state();
    return kavendra::typedPathMenu(state.searchText, state.appSettings.searchPathActions,
                                   {searchPathActions, excel, report()});
}

Menu WindowMenus::itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn) {
    return kavendra::itemMenu(item, clickedColumn, itemMenuSource());
}

Menu WindowMenus::generalMenu() {
    return kavendra::generalMenu(itemMenuSource());
}

ItemMenuSource WindowMenus::itemMenuSource() {
    return {.actions = itemActions,
            .dataDirectory = content.state().appSettings.dataDirectoryPath,
            .report = report(),
            .reload = [this] { content.reloadData(); },
            .openDataDirectory = [this] { openDataDirectory(); }};
}

ReportOutcome WindowMenus::report() {
    return [this](const ActionOutcome& outcome) { content.report(outcome); };
}

Menu WindowMenus::settingsMenu(std::function<void()> chooseDataDirectory) {
    const ContentViewState& state = content.state();
    return kavendra::settingsMenu(
        {.settings = state.appSettings,
         .isLaunchedAtLogin = state.startupRegistrationStatus == StartupRegistrationStatus::enabled,
         .change = [this](const SettingsEdit& edit) { return changeSettings(edit); },
         .reload = [this] { content.reloadData(); },
         .applyAppearance = [this] { content.applyAppearance(); },
         .openLogDirectory =
             [this] { openDirectory(content.state().appSettings.logDirectoryPath, "Opened log directory"); },
         .requestStartupChange = [this] { content.requestStartupChange(); },
         .openDataDirectory = [this] { openDataDirectory(); },
         .chooseDataDirectory = std::move(chooseDataDirectory)});
}

bool WindowMenus::changeSettings(const SettingsEdit& edit) {
    LaunchSettings changed = content.state().appSettings;
    edit(changed);
    return content.saveSettings(changed);
}

void WindowMenus::changeDataDirectory(const std::string& path) {
    if (path == content.state().appSettings.dataDirectoryPath)
        return;
    if (const auto created = createDirectories(path); !created)
        return content.reportFailure(created.error().description);
    changeSettings([&path](LaunchSettings& settings) { settings.dataDirectoryPath = path; });
    content.reloadData(); // from the old directory when the new one could not be saved
}

void WindowMenus::openDirectory(const std::string& path, std::string message) {
    content.report(outcomeOf(launcher.showDirectoryInFinder(path), std::move(message)));
}

void WindowMenus::openDataDirectory() {
    openDirectory(content.state().appSettings.dataDirectoryPath, "Opened config directory");
}

} // namespace kavendra
