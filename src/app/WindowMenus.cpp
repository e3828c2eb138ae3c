#include "app/WindowMenus.h"

#include "platform/Files.h"

#include <iterator>
#include <utility>

namespace kavendra {

WindowMenus::WindowMenus(ContentView& content, Desktop& desktop, Processes& processes,
                         std::string excelApplicationPath)
    : m_content(content),
      m_launcher(desktop, processes, [&content](std::string_view line) { content.appendLogLine(line); }),
      m_excel(m_launcher, std::move(excelApplicationPath)), m_itemActions(desktop, m_launcher),
      m_typedPathActions(desktop, processes, m_launcher) {}

/// Returns an entry whose action reports its outcome.
MenuEntry WindowMenus::entry(const char* title, bool isEnabled, std::function<ActionOutcome()> action) {
    return {.title = title, .isEnabled = isEnabled, .action = [this, action = std::move(action)] {
                m_content.report(action());
            }};
}

// The item's menu

Menu WindowMenus::itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn) {
    const std::string& dataDirectory = settings().dataDirectoryPath;
    MenuEntry dataFile =
        entry(KAVENDRA_TEXT("Open Data File (%1)"), sourceFileOf(item, dataDirectory).has_value(),
              [=, this] { return m_itemActions.openSourceFile(item, dataDirectory); });
    dataFile.titleArgument = item.source;

    Menu menu{
        entry(KAVENDRA_TEXT("Open Parent Directory"), parentDirectoryOf(item, clickedColumn).has_value(),
              [=, this] { return m_itemActions.openParentDirectory(item, clickedColumn); }),
        {.title = KAVENDRA_TEXT("Copy to Clipboard"), .submenu = copyMenu(item, clickedColumn)},
        {.title = KAVENDRA_TEXT("Open in Excel"),
         .submenu = excelMenu(m_excel.canOpenItem(item),
                              [=, this](ExcelOpenMode mode) { return m_excel.openItem(item, mode); })},
        menuSeparator(),
        std::move(dataFile),
        menuSeparator(),
    };
    std::ranges::move(generalMenu(), std::back_inserter(menu));
    return menu;
}

Menu WindowMenus::copyMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn) {
    Menu menu;
    for (const LaunchItemCopyAction action : allCopyActions)
        menu.push_back(entry(menuTitle(action), !copyTextOf(item, clickedColumn, action).empty(),
                             [=, this] { return m_itemActions.copy(item, clickedColumn, action); }));
    return menu;
}

Menu WindowMenus::excelMenu(bool isEnabled, const std::function<ActionOutcome(ExcelOpenMode)>& open) {
    Menu menu;
    for (const ExcelOpenMode mode : allExcelOpenModes)
        menu.push_back(entry(menuTitle(mode), isEnabled, [=] { return open(mode); }));
    return menu;
}

Menu WindowMenus::generalMenu() {
    return {{.title = KAVENDRA_TEXT("Reload Data Files"), .action = [this] { m_content.reloadData(); }},
            dataDirectoryEntry()};
}

MenuEntry WindowMenus::dataDirectoryEntry() {
    return entry(KAVENDRA_TEXT("Open Data Directory"), true, [this] {
        return outcomeOf(m_launcher.showDirectoryInFinder(settings().dataDirectoryPath),
                         "Opened config directory");
    });
}

// The typed path's menu

bool WindowMenus::hasTypedPath() const {
    return typedPathOf(m_content.state().searchText).has_value();
}

Menu WindowMenus::typedPathMenu() {
    const std::string& text = m_content.state().searchText;
    const bool hasPath = typedPathOf(text).has_value();
    const bool hasFile = typedPathFileOf(text).has_value();
    const bool hasDirectory = typedPathDirectoryOf(text).has_value();
    const auto pathEntry = [&](const char* title, bool isEnabled,
                               ActionOutcome (TypedPathActions::*action)(std::string_view)) {
        return entry(title, isEnabled, [this, text, action] { return (m_typedPathActions.*action)(text); });
    };

    Menu open{pathEntry(KAVENDRA_TEXT("Open File with Associated App"), hasFile,
                        &TypedPathActions::openWithAssociatedApplication)};
    addConfiguredActions(open, SearchPathActionTargetType::file, KAVENDRA_TEXT("Open File with %1"), hasFile);
    open.push_back(menuSeparator());
    open.push_back(pathEntry(KAVENDRA_TEXT("Open Directory with Finder"), hasDirectory,
                             &TypedPathActions::openDirectoryInFinder));
    open.push_back(pathEntry(KAVENDRA_TEXT("Open Directory with Terminal"), hasDirectory,
                             &TypedPathActions::openDirectoryInTerminal));
    addConfiguredActions(open, SearchPathActionTargetType::directory, KAVENDRA_TEXT("Open Directory with %1"),
                         hasDirectory);

    return {
        {.title = KAVENDRA_TEXT("Open"), .submenu = std::move(open)},
        {.title = KAVENDRA_TEXT("Open Excel"),
         .submenu =
             excelMenu(m_excel.canOpenTypedPath(text),
                       [this, text](ExcelOpenMode mode) { return m_excel.openTypedPath(text, mode); })},
        {.title = KAVENDRA_TEXT("Copy to Clipboard"),
         .submenu = {pathEntry(KAVENDRA_TEXT("Copy Directory"), hasDirectory,
                               &TypedPathActions::copyDirectory),
                     pathEntry(KAVENDRA_TEXT("Copy Filename"), hasPath, &TypedPathActions::copyFileName)}},
    };
}

void WindowMenus::addConfiguredActions(Menu& menu, SearchPathActionTargetType type, const char* title,
                                       bool hasTarget) {
    for (const SearchPathAction& action : settings().searchPathActions) {
        if (action.targetType != type)
            continue;
        menu.push_back(entry(title, hasTarget && m_typedPathActions.canRun(action),
                             [this, action, text = m_content.state().searchText] {
                                 return m_typedPathActions.run(action, text);
                             }));
        menu.back().titleArgument = action.appName;
    }
}

// The settings menu

Menu WindowMenus::settingsMenu(std::function<void()> chooseDataDirectory) {
    Menu menu;
    for (const Setting& setting : allSettings)
        if (setting.toggleTitle)
            menu.push_back(toggle(setting));
    menu.push_back({.title = KAVENDRA_TEXT("Appearance"), .submenu = appearanceMenu()});
    menu.push_back(entry(KAVENDRA_TEXT("Open Config/Log Directory"), true, [this] {
        return outcomeOf(m_launcher.showDirectoryInFinder(settings().logDirectoryPath),
                         "Opened log directory");
    }));
    menu.push_back(menuSeparator());
    menu.push_back(
        {.title = KAVENDRA_TEXT("Launch at Login"),
         .isChecked = m_content.state().startupRegistrationStatus == StartupRegistrationStatus::enabled,
         .action = [this] { m_content.requestStartupChange(); }});
    menu.push_back(menuSeparator());
    menu.push_back(dataDirectoryEntry());
    menu.push_back(
        {.title = KAVENDRA_TEXT("Change Data Directory..."), .action = std::move(chooseDataDirectory)});
    return menu;
}

MenuEntry WindowMenus::toggle(const Setting& setting) {
    const auto member = std::get<bool LaunchSettings::*>(setting.member);
    return {.title = setting.toggleTitle,
            .isChecked = settings().*member,
            .action = [this, member, effect = setting.effect] {
                if (change(member, !(settings().*member)) && effect == SettingEffect::reload)
                    m_content.reloadData();
            }};
}

Menu WindowMenus::appearanceMenu() {
    Menu menu;
    for (const LaunchAppearanceMode mode : allAppearanceModes)
        menu.push_back({.title = std::string(storedText(mode)),
                        .isChecked = mode == settings().appearanceMode,
                        .action = [this, mode] {
                            if (change(&LaunchSettings::appearanceMode, mode))
                                m_content.applyAppearance();
                        }});
    return menu;
}

void WindowMenus::changeDataDirectory(const std::string& path) {
    if (path == settings().dataDirectoryPath)
        return;
    if (const auto created = createDirectories(path); !created)
        return m_content.reportFailure(created.error().description);
    change(&LaunchSettings::dataDirectoryPath, path);
    m_content.reloadData(); // also when saving failed: from the old directory
}

/// Saves the settings with a changed member. Returns false when they could not be saved and did not change.
template <typename Value>
bool WindowMenus::change(Value LaunchSettings::* member, Value value) {
    LaunchSettings changed = settings();
    changed.*member = std::move(value);
    return m_content.saveSettings(changed);
}

} // namespace kavendra
