#include "app/TypedPathMenu.h"

#include "launch/TypedPath.h"

namespace kavendra {

namespace {

/// The menus of one search text.
struct Builder {
    const std::string& text;
    const std::vector<SearchPathAction>& configured;
    const TypedPathMenuSource& source;

    MenuEntry entry(std::string title, bool isEnabled,
                    ActionOutcome (TypedPathActions::*action)(std::string_view)) const {
        return {.title = std::move(title),
                .isEnabled = isEnabled,
                .action = [text = text, &actions = source.actions, report = source.report, action] {
                    report((actions.*action)(text));
                }};
    }

    void addConfigured(Menu& menu, SearchPathActionTargetType type, std::string_view title,
                       bool hasTarget) const {
        for (const SearchPathAction& action : configured)
            if (action.targetType == type)
                menu.push_back({.title = std::string(title),
                                .titleArgument = action.appName,
                                .isEnabled = hasTarget && source.actions.canRun(action),
                                .action = [text = text, &actions = source.actions, report = source.report,
                                           action] { report(actions.run(action, text)); }});
    }

    Menu open(bool hasFile, bool hasDirectory) const {
        using enum SearchPathActionTargetType;
        Menu menu{entry("Open File with Associated App", hasFile,
                        &TypedPathActions::openWithAssociatedApplication)};
        addConfigured(menu, file, "Open File with %1", hasFile);
        menu.push_back(menuSeparator());
        menu.push_back(
            entry("Open Directory with Finder", hasDirectory, &TypedPathActions::openDirectoryInFinder));
        menu.push_back(
            entry("Open Directory with Terminal", hasDirectory, &TypedPathActions::openDirectoryInTerminal));
        addConfigured(menu, directory, "Open Directory with %1", hasDirectory);
        return menu;
    }

    Menu openExcel() const {
        Menu menu;
        const bool isEnabled = source.excel.canOpenTypedPath(text);
        for (const ExcelOpenMode mode : allExcelOpenModes)
            menu.push_back({.title = std::string(menuTitle(mode)),
                            .isEnabled = isEnabled,
                            .action = [text = text, &excel = source.excel, report = source.report, mode] {
                                report(excel.openTypedPath(text, mode));
                            }});
        return menu;
    }

    Menu copy(bool hasPath, bool hasDirectory) const {
        return {entry("Copy Directory", hasDirectory, &TypedPathActions::copyDirectory),
                entry("Copy Filename", hasPath, &TypedPathActions::copyFileName)};
    }
};

} // namespace

Menu typedPathMenu(const std::string& searchText, const std::vector<SearchPathAction>& configured,
                   const TypedPathMenuSource& source) {
    const Builder builder{searchText, configured, source};
    const bool hasPath = typedPathOf(searchText).has_value();
    const bool hasFile = typedPathFileOf(searchText).has_value();
    const bool hasDirectory = typedPathDirectoryOf(searchText).has_value();
    return {{.title = "Open", .submenu = builder.open(hasFile, hasDirectory)},
            {.title = "Open Excel", .submenu = builder.openExcel()},
            {.title = "Copy to Clipboard", .submenu = builder.copy(hasPath, hasDirectory)}};
}

} // namespace kavendra
