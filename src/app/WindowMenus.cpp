#include "app/WindowMenus.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <iterator>
#include <utility>

namespace kavendra {

namespace {

MenuQuestion question(std::function<bool()> function) {
    return std::make_shared<const std::function<bool()>>(std::move(function));
}

} // namespace

WindowMenus::WindowMenus(ContentView& content, Desktop& desktop, Processes& processes, Executor& executor,
                         MacTools tools)
    : m_content(content), m_executor(executor), m_launcher(desktop, processes, content.threadSafeLogLine()),
      m_excel(m_launcher, std::move(tools)), m_itemActions(desktop, m_launcher),
      m_typedPathActions(desktop, processes, m_launcher) {}

/// Returns an entry whose action runs on another thread and reports its outcome.
MenuEntry WindowMenus::entry(const char* title, std::function<ActionOutcome()> action,
                             MenuQuestion question) {
    return {.title = title,
            .action = [this, action = std::move(action)] { m_content.perform(action); },
            .question = std::move(question)};
}

// The item's menu

Menu WindowMenus::itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn) {
    const std::string dataDirectory = settings().dataDirectoryPath;
    MenuEntry dataFile = entry(
        KAVENDRA_TEXT("Open Data File (%1)"),
        [=, this] { return m_itemActions.openSourceFile(item, dataDirectory); },
        question([=] { return sourceFileOf(item, dataDirectory).has_value(); }));
    dataFile.titleArgument = item.source;

    Menu menu{
        entry(
            KAVENDRA_TEXT("Open Parent Directory"),
            [=, this] { return m_itemActions.openParentDirectory(item, clickedColumn); },
            question([=] { return parentDirectoryOf(item, clickedColumn).has_value(); })),
        {.title = KAVENDRA_TEXT("Copy to Clipboard"), .submenu = copyMenu(item, clickedColumn)},
        {.title = KAVENDRA_TEXT("Open in Excel"),
         .submenu = excelMenu(question([=, this] { return m_excel.canOpenItem(item); }),
                              [=, this](ExcelOpenMode mode) { return m_excel.openItem(item, mode); })},
        menuSeparator(),
        std::move(dataFile),
        menuSeparator(),
    };
    enableByQuestions(menu, m_executor);
    std::ranges::move(generalMenu(), std::back_inserter(menu));
    return menu;
}

Menu WindowMenus::copyMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn) {
    Menu menu;
    for (const LaunchItemCopyAction action : allCopyActions) {
        menu.push_back(
            entry(menuTitle(action), [=, this] { return m_itemActions.copy(item, clickedColumn, action); }));
        menu.back().isEnabled = !copyTextOf(item, clickedColumn, action).empty();
    }
    return menu;
}

Menu WindowMenus::excelMenu(const MenuQuestion& question,
                            const std::function<ActionOutcome(ExcelOpenMode)>& open) {
    Menu menu;
    for (const ExcelOpenMode mode : allExcelOpenModes)
        menu.push_back(entry(menuTitle(mode), [=] { return open(mode); }, question));
    return menu;
}

Menu WindowMenus::generalMenu() {
    return {{.title = KAVENDRA_TEXT("Reload Data Files"),
             .shortcut = "F5",
             .action = [this] { m_content.reloadData(); }},
            dataDirectoryEntry()};
}

MenuEntry WindowMenus::dataDirectoryEntry() {
    return entry(KAVENDRA_TEXT("Open Data Directory"), [this, path = settings().dataDirectoryPath] {
        return outcomeOf(m_launcher.showDirectoryInFinder(path), "Opened config directory");
    });
}

// The typed path's menu

Menu WindowMenus::typedPathMenu() {
    const std::string& text = m_content.state().searchText;
    const MenuQuestion hasPath = question([text] { return typedPathOf(text).has_value(); });
    const MenuQuestion hasFile = question([text] { return typedPathFileOf(text).has_value(); });
    const MenuQuestion hasDirectory = question([text] { return typedPathDirectoryOf(text).has_value(); });
    const auto pathEntry = [&](const char* title, const MenuQuestion& question,
                               ActionOutcome (TypedPathActions::*action)(std::string_view)) {
        return entry(title, [this, text, action] { return (m_typedPathActions.*action)(text); }, question);
    };

    Menu open{pathEntry(KAVENDRA_TEXT("Open File with Associated App"), hasFile,
                        &TypedPathActions::openWithAssociatedApplication)};
    addConfiguredActions(open, SearchPathActionTargetType::file, KAVENDRA_TEXT("Open File with %1"));
    open.push_back(menuSeparator());
    open.push_back(pathEntry(KAVENDRA_TEXT("Open Directory with Finder"), hasDirectory,
                             &TypedPathActions::openDirectoryInFinder));
    open.push_back(pathEntry(KAVENDRA_TEXT("Open Directory with Terminal"), hasDirectory,
                             &TypedPathActions::openDirectoryInTerminal));
    addConfiguredActions(open, SearchPathActionTargetType::directory,
                         KAVENDRA_TEXT("Open Directory with %1"));

    Menu menu{
        {.title = KAVENDRA_TEXT("Open"), .submenu = std::move(open)},
        {.title = KAVENDRA_TEXT("Open Excel"),
         .submenu =
             excelMenu(question([this, text] { return m_excel.canOpenTypedPath(text); }),
                       [this, text](ExcelOpenMode mode) { return m_excel.openTypedPath(text, mode); })},
        {.title = KAVENDRA_TEXT("Copy to Clipboard"),
         .submenu = {pathEntry(KAVENDRA_TEXT("Copy Directory"), hasDirectory,
                               &TypedPathActions::copyDirectory),
                     pathEntry(KAVENDRA_TEXT("Copy Filename"), hasPath, &TypedPathActions::copyFileName)}},
    };
    enableByQuestions(menu, m_executor);
    return menu;
}

void WindowMenus::addConfiguredActions(Menu& menu, SearchPathActionTargetType type, const char* title) {
    for (const SearchPathAction& action : settings().searchPathActions) {
        if (action.targetType != type)
            continue;
        const std::string text = m_content.state().searchText;
        menu.push_back(entry(
            title, [=, this] { return m_typedPathActions.run(action, text); },
            question([=, this] { return m_typedPathActions.canRun(action, text); })));
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
    menu.push_back(
        entry(KAVENDRA_TEXT("Open Config/Log Directory"), [this, path = settings().logDirectoryPath] {
            return outcomeOf(m_launcher.showDirectoryInFinder(path), "Opened log directory");
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

std::string WindowMenus::directoryToChooseFrom() const {
    const std::string& path = settings().dataDirectoryPath;
    const auto answers = askAll(m_executor, {[path] { return isDirectory(path); }}, menuPatience);
    return answers.front().value_or(false) ? path : homeDirectory();
}

void WindowMenus::changeDataDirectory(const std::string& path) {
    if (path == settings().dataDirectoryPath)
        return;
    m_content.performStep([path] { return createDirectories(path); },
                          [this, path](const Result<void>& created) {
                              if (!created)
                                  return m_content.reportFailure(created.error().description);
                              change(&LaunchSettings::dataDirectoryPath, path);
                              m_content.reloadData(); // also when saving failed: from the old directory
                          });
}

/// Saves the settings with a changed member. Returns false when they could not be saved and did not change.
template <typename Value>
bool WindowMenus::change(Value LaunchSettings::* member, Value value) {
    LaunchSettings changed = settings();
    changed.*member = std::move(value);
    return m_content.saveSettings(changed);
}

} // namespace kavendra
