#include "launch/ItemActions.h"

#include "base/Text.h"
#include "base/TranslatableText.h"
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

const char* menuTitle(LaunchItemCopyAction action) {
    constexpr std::array titles{KAVENDRA_TEXT("Copy Command to Execute"), KAVENDRA_TEXT("Copy Cell Value"),
                                KAVENDRA_TEXT("Copy Row")};
    return titles[static_cast<std::size_t>(action)];
}

std::string copyTextOf(const LaunchItem& item, std::optional<ItemColumn> clickedColumn,
                       LaunchItemCopyAction action) {
    switch (action) {
    case LaunchItemCopyAction::commandToExecute:
        return commandLineOf(item);
    case LaunchItemCopyAction::cellValue:
        return clickedColumn ? std::string(columnValue(item, *clickedColumn)) : std::string();
    case LaunchItemCopyAction::row:
        break;
    }
    return rowOf(item);
}

std::optional<std::string> parentDirectoryOf(const LaunchItem& item,
                                             std::optional<ItemColumn> clickedColumn) {
    std::optional<std::string> path;
    if (clickedColumn == ItemColumn::params)
        path = existingPathOf(item.params);
    if (!path)
        path = existingPathOf(item.command);
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

ActionOutcome ItemActions::copy(const LaunchItem& item, std::optional<ItemColumn> clickedColumn,
                                LaunchItemCopyAction action) {
    const std::string text = copyTextOf(item, clickedColumn, action);
    if (text.empty())
        return "Nothing to copy";
    m_desktop.copyText(text);
    constexpr std::string_view verb = "Copy";
    return "Copied" + std::string(menuTitle(action)).substr(verb.size());
}

ActionOutcome ItemActions::openParentDirectory(const LaunchItem& item,
                                               std::optional<ItemColumn> clickedColumn) {
    const auto directory = parentDirectoryOf(item, clickedColumn);
    if (!directory)
        return "No parent directory available";
    return outcomeOf(m_launcher.showDirectoryInFinder(*directory), "Opened parent directory");
}

ActionOutcome ItemActions::openSourceFile(const LaunchItem& item, std::string_view dataDirectory) {
    const auto file = sourceFileOf(item, dataDirectory);
    if (!file)
        return "No source file available";
    return m_desktop.openFile(*file) ? "Opened source file" : "Failed to open source file";
}

} // namespace kavendra
