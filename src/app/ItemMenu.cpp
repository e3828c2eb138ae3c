#include "app/ItemMenu.h"

namespace kavendra {

namespace {

/// An entry that hands its payload to one of the actions.
template <typename Payload>
MenuEntry payloadEntry(std::string_view title, bool isEnabled, Payload payload, const ItemMenuSource& source,
                       ActionOutcome (ItemActions::*action)(const Payload&)) {
    return {.title = std::string(title),
            .isEnabled = isEnabled,
            .action = [payload = std::move(payload), &actions = source.actions, report = source.report,
                       action] { report((actions.*action)(payload)); }};
}

Menu copyMenu(const LaunchItem& item, std::optional<ItemColumn> column, const ItemMenuSource& source) {
    using enum LaunchItemCopyAction::Kind;
    Menu menu;
    for (const LaunchItemCopyAction& action :
         {LaunchItemCopyAction{commandToExecute}, LaunchItemCopyAction{cellValue, column},
          LaunchItemCopyAction{row}}) {
        const CopyActionPayload payload{item, action};
        menu.push_back(payloadEntry(menuTitle(action), !copyTextOf(payload).empty(), payload, source,
                                    &ItemActions::copy));
    }
    return menu;
}

Menu excelMenu(const LaunchItem& item, const ItemMenuSource& source) {
    const bool isEnabled = source.actions.canOpenInExcel(item);
    Menu menu;
    for (const ExcelOpenMode mode : allExcelOpenModes)
        menu.push_back(payloadEntry(menuTitle(mode), isEnabled, ExcelActionPayload{item, mode}, source,
                                    &ItemActions::openInExcel));
    return menu;
}

MenuEntry parentDirectoryEntry(const LaunchItem& item, std::optional<ItemColumn> column,
                               const ItemMenuSource& source) {
    const ParentDirectoryActionPayload payload{item, column};
    return payloadEntry("Open Parent Directory", parentDirectoryOf(payload).has_value(), payload, source,
                        &ItemActions::openParentDirectory);
}

MenuEntry dataFileEntry(const LaunchItem& item, const ItemMenuSource& source) {
    return {
        .title = "Open Data File (%1)",
        .titleArgument = item.source,
        .isEnabled = sourceFileOf(item, source.dataDirectory).has_value(),
        .action = [item, &actions = source.actions, report = source.report,
                   directory = source.dataDirectory] { report(actions.openSourceFile(item, directory)); }};
}

} // namespace

Menu itemMenu(const LaunchItem& item, std::optional<ItemColumn> clickedColumn, const ItemMenuSource& source) {
    Menu menu{parentDirectoryEntry(item, clickedColumn, source),
              {.title = "Copy to Clipboard", .submenu = copyMenu(item, clickedColumn, source)},
              {.title = "Open in Excel", .submenu = excelMenu(item, source)},
              menuSeparator(),
              dataFileEntry(item, source),
              menuSeparator()};
    for (MenuEntry& entry : generalMenu(source))
        menu.push_back(std::move(entry));
    return menu;
}

Menu generalMenu(const ItemMenuSource& source) {
    return {{.title = "Reload Data Files", .action = source.reload},
            {.title = "Open Data Directory", .action = source.openDataDirectory}};
}

} // namespace kavendra
