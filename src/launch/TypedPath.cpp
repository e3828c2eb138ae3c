#include "launch/TypedPath.h"

#include "base/Text.h"
#include "platform/ExecutableSearch.h"
#include "platform/Files.h"
#include "platform/Paths.h"

namespace kavendra {

namespace {

std::string_view withoutQuotes(std::string_view text) {
    constexpr std::string_view quotes = "\"'";
    const std::size_t begin = std::min(text.find_first_not_of(quotes), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(quotes) + 1);
}

/// Returns the path that a configured action opens.
std::optional<std::string> targetOf(const SearchPathAction& action, std::string_view searchText) {
    return action.targetType == SearchPathActionTargetType::file ? typedPathFileOf(searchText)
                                                                 : typedPathDirectoryOf(searchText);
}

} // namespace

std::optional<std::string> existingPathOf(std::string_view text) {
    const std::string path = expandedPath(text);
    if (path.empty() || !exists(path))
        return std::nullopt;
    return absolutePath(path);
}

std::optional<std::string> typedPathOf(std::string_view searchText) {
    return existingPathOf(withoutQuotes(trimmed(searchText)));
}

std::optional<std::string> typedPathFileOf(std::string_view searchText) {
    auto path = typedPathOf(searchText);
    return path && !isDirectory(*path) ? path : std::nullopt;
}

std::optional<std::string> typedPathDirectoryOf(std::string_view searchText) {
    auto path = typedPathOf(searchText);
    if (!path || isDirectory(*path))
        return path;
    return std::string(parentPath(*path));
}

ActionOutcome TypedPathActions::openWithAssociatedApplication(std::string_view searchText) {
    const auto path = typedPathOf(searchText);
    if (!path)
        return "No path to open";
    return m_desktop.openFile(*path) ? "Opened path" : "Failed to open path";
}

ActionOutcome TypedPathActions::openDirectoryInFinder(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to open";
    return outcomeOf(m_launcher.showDirectoryInFinder(*directory), "Opened directory in Finder");
}

ActionOutcome TypedPathActions::openDirectoryInTerminal(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to open";
    return outcomeOf(m_launcher.openTerminal(*directory), "Opened directory in Terminal");
}

ActionOutcome TypedPathActions::copyDirectory(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to copy";
    m_desktop.copyText(*directory);
    return "Copied directory";
}

ActionOutcome TypedPathActions::copyFileName(std::string_view searchText) {
    const auto path = typedPathOf(searchText);
    if (!path)
        return "No filename to copy";
    m_desktop.copyText(std::string(lastPathComponent(*path)));
    return "Copied filename";
}

bool TypedPathActions::canRun(const SearchPathAction& action, std::string_view searchText) const {
    return targetOf(action, searchText) && resolveExecutable(action.binaryPath, m_processes.variable("PATH"));
}

ActionOutcome TypedPathActions::run(const SearchPathAction& action, std::string_view searchText) {
    const std::string targetWord = lowercased(storedText(action.targetType));
    const auto target = targetOf(action, searchText);
    if (!target)
        return "No " + targetWord + " to open";
    const auto program = resolveExecutable(action.binaryPath, m_processes.variable("PATH"));
    if (!program)
        return action.appName + " command not found";
    return m_launcher.runProgram(*program, {*target}, "Opened " + targetWord + " with " + action.appName);
}

} // namespace kavendra
