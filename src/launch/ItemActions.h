#pragma once

#include "data/LaunchItem.h"
#include "launch/ActionOutcome.h"
#include "launch/ExcelIntegration.h"
#include "launch/Launcher.h"

#include <optional>
#include <string>
#include <string_view>

/// What can be done with a row besides launching it.
namespace kavendra {

/// What a row puts on the clipboard.
struct LaunchItemCopyAction {
    enum Kind {
        cellValue,        ///< one field as it stands
        commandToExecute, ///< command and params as one would type them in a shell
        row               ///< all fields with tabs between them
    };
    Kind kind;
    std::optional<ItemColumn> column = {}; ///< of the cell; none copies nothing
};

std::string_view menuTitle(const LaunchItemCopyAction& action);

// What an entry of the row's menu acts on.
struct CopyActionPayload {
    LaunchItem item;
    LaunchItemCopyAction action;
};
struct ParentDirectoryActionPayload {
    LaunchItem item;
    std::optional<ItemColumn> clickedColumn;
};
struct ExcelActionPayload {
    LaunchItem item;
    ExcelOpenMode mode;
};

/// Returns the text that a copy puts on the clipboard, empty when there is nothing to copy.
std::string copyTextOf(const CopyActionPayload& payload);

/// Returns the directory that holds what the command names, or what the params name when their column was
/// clicked and they name something; nothing when there is none.
std::optional<std::string> parentDirectoryOf(const ParentDirectoryActionPayload& payload);

/// Returns the path of the data file that the item came from, nothing when it is not there.
std::optional<std::string> sourceFileOf(const LaunchItem& item, std::string_view dataDirectory);

class ItemActions {
public:
    /// All three must outlive this.
    ItemActions(Desktop& systemDesktop, Launcher& itemLauncher, ExcelIntegration& excelIntegration)
        : desktop(systemDesktop), launcher(itemLauncher), excel(excelIntegration) {}

    ActionOutcome copy(const CopyActionPayload& payload);
    ActionOutcome openParentDirectory(const ParentDirectoryActionPayload& payload);
    ActionOutcome openSourceFile(const LaunchItem& item, std::string_view dataDirectory);
    bool canOpenInExcel(const LaunchItem& item) const { return excel.canOpenItem(item); }
    ActionOutcome openInExcel(const ExcelActionPayload& payload);

private:
    Desktop& desktop;
    Launcher& launcher;
    ExcelIntegration& excel;
};

} // namespace kavendra
