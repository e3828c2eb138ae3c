#include "ui/WindowMenus.h"

#include "launch/SearchPath.h"

namespace kavendra {

WindowMenus::WindowMenus(ContentView& contentView, Desktop& desktop, Processes& processes)
    : content(contentView),
      launcher(desktop, processes, [this](std::string_view line) { content.appendLogLine(line); }),
      excel(launcher), itemActions(desktop, launcher, excel),
      searchPathActions(desktop, processes, launcher) {}

bool WindowMenus::hasSearchPath() const {
    return searchPathOf(content.state().searchText).has_value();
}

Menu WindowMenus::searchPathMenu() {
    const ContentViewState& state = content.state();
    return kavendra::searchPathMenu(state.searchText, state.appSettings.searchPathActions,
                                    {searchPathActions, excel, report()});
}

Menu WindowMenus::itemMenu(const LaunchItem& item,
                           const std::optional<std::string>& clickedColumnIdentifier) {
    return kavendra::itemMenu(item, clickedColumnIdentifier, itemMenuSource());
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

void WindowMenus::openDataDirectory() {
    const std::string& directory = content.state().appSettings.dataDirectoryPath;
    content.report(outcomeOf(launcher.showDirectoryInFinder(directory), "Opened config directory"));
}

} // namespace kavendra
