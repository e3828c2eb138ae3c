#include "launch/TypedPathActions.h"

#include "base/Text.h"
#include "launch/TypedPath.h"
#include "platform/ExecutableSearch.h"
#include "platform/Paths.h"

namespace kavendra {

ActionOutcome TypedPathActions::openWithAssociatedApplication(std::string_view searchText) {
    const auto path = typedPathOf(searchText);
    if (!path)
        return "No path to open";
    return desktop.openFile(*path) ? "Opened path" : "Failed to open path";
}

ActionOutcome TypedPathActions::openDirectoryInFinder(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to open";
    return outcomeOf(launcher.showDirectoryInFinder(*directory), "Opened directory in Finder");
}

ActionOutcome TypedPathActions::openDirectoryInTerminal(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to open";
    return outcomeOf(launcher.openTerminal(*directory), "Opened directory in Terminal");
}

ActionOutcome TypedPathActions::copyDirectory(std::string_view searchText) {
    const auto directory = typedPathDirectoryOf(searchText);
    if (!directory)
        return "No directory to copy";
    desktop.copyText(*directory);
    return "Copied directory";
}

ActionOutcome TypedPathActions::copyFileName(std::string_view searchText) {
    const auto path = typedPathOf(searchText);
    if (!path)
        return "No filename to copy";
    desktop.copyText(std::string(lastPathComponent(*path)));
    return "Copied filename";
}

bool TypedPathActions::canRun(const SearchPathAction& action) const {
    return resolveExecutable(action.binaryPath, processes.variable("PATH")).has_value();
}

ActionOutcome TypedPathActions::run(const SearchPathAction& action, std::string_view searchText) {
    const std::string targetWord = lowercased(storedText(action.targetType));
    const auto target = action.targetType == SearchPathActionTargetType::file
                            ? typedPathFileOf(searchText)
                            : typedPathDirectoryOf(searchText);
    if (!target)
        return "No " + targetWord + " to open";
    const auto program = resolveExecutable(action.binaryPath, processes.variable("PATH"));
    if (!program)
        return action.appName + " command not found";
    return outcomeOf(launcher.runProgramAndWait(*program, {*target}),
                     "Opened " + targetWord + " with " + action.appName);
}

} // namespace kavendra
