#include "launch/ItemActions.h"

#include "base/Text.h"
#include "launch/TypedPath.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace kavendra {

namespace {

std::string commandLineOf(const LaunchItem& item) {
    std::string command(trimmed(item.command));
    const std::string_view params = trimmed(item.params);
    if (containsWhiteSpace(command))
        command = '"' + command + '"';
    if (!command.empty() && !params.empty())
        command += ' ';
    return command.append(params);
}

std::string rowOf(const LaunchItem& item) {
    std::string row;
    for (const ItemColumnProperties& column : itemColumns)
        row.append(item.*column.field) += '\t';
    row.pop_back();
    return row;
}

} // namespace

std::string_view menuTitle(const LaunchItemCopyAction& action) {
    switch (action.kind) {
    case LaunchItemCopyAction::cellValue:
        return "Copy Cell Value";
    case LaunchItemCopyAction::commandToExecute:
        return "Copy Command to Execute";
    case LaunchItemCopyAction::row:
        break;
    }
    return "Copy Row";
}

std::string copyTextOf(const CopyActionPayload& payload) {
    const auto& [item, action] = payload;
    switch (action.kind) {
    case LaunchItemCopyAction::cellValue:
        return action.column ? std::string(columnValue(item, *action.column)) : std::string();
    case LaunchItemCopyAction::commandToExecute:
        return commandLineOf(item);
    case LaunchItemCopyAction::row:
        break;
    }
    return rowOf(item);
}

std::optional<std::string> parentDirectoryOf(const ParentDirectoryActionPayload& payload) {
    std::optional<std::string> path;
    if (payload.clickedColumn == ItemColumn::params)
        path = existingPathOf(payload.item.params);
    if (!path)
        path = existingPathOf(payload.item.command);
    if (!path)
        return std::nullopt;
    std::string directory(parentPath(*path));
    return isDirectory(directory) ? std::optional(std::move(directory)) : std::nullopt;
}

std::optional<std::string> sourceFileOf(const LaunchItem& item, std::string_view dataDirectory) {
    if (item.source == builtinSource)
        return std::nullopt;
    std::string path = absolutePath(joinedPath(dataDirectory, item.source));
    return exists(path) ? std::optional(std::move(path)) : std::nullopt;
}

ActionOutcome ItemActions::copy(const CopyActionPayload& payload) {
    const std::string text = copyTextOf(payload);
    if (text.empty())
        return "Nothing to copy";
    desktop.copyText(text);
    constexpr std::string_view verb = "Copy";
    return "Copied" + std::string(menuTitle(payload.action).substr(verb.size()));
}

ActionOutcome ItemActions::openParentDirectory(const ParentDirectoryActionPayload& payload) {
    const auto directory = parentDirectoryOf(payload);
    if (!directory)
        return "No parent directory available";
    return outcomeOf(launcher.showDirectoryInFinder(*directory), "Opened parent directory");
}

ActionOutcome ItemActions::openSourceFile(const LaunchItem& item, std::string_view dataDirectory) {
    const auto file = sourceFileOf(item, dataDirectory);
    if (!file)
        return "No source file available";
    return desktop.openFile(*file) ? "Opened source file" : "Failed to open source file";
}

ActionOutcome ItemActions::openInExcel(const ExcelActionPayload& payload) {
    return excel.openItem(payload.item, payload.mode);
}

} // namespace kavendra
