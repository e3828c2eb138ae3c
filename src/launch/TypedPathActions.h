#pragma once

#include "config/LaunchSettings.h"
#include "launch/ActionOutcome.h"
#include "launch/Launcher.h"

#include <string_view>

namespace kavendra {

/// What can be done with the path that the text of the search field names (see SearchPath.h).
class TypedPathActions {
public:
    /// All three must outlive this.
    TypedPathActions(Desktop& systemDesktop, Processes& starter, Launcher& itemLauncher)
        : desktop(systemDesktop), processes(starter), launcher(itemLauncher) {}

    ActionOutcome openWithAssociatedApplication(std::string_view searchText);
    ActionOutcome openDirectoryInFinder(std::string_view searchText);
    ActionOutcome openDirectoryInTerminal(std::string_view searchText);
    ActionOutcome copyDirectory(std::string_view searchText);
    ActionOutcome copyFileName(std::string_view searchText);

    /// Whether the program of a configured action is there.
    bool canRun(const SearchPathAction& action) const;
    /// Runs the action's program with the file, or the directory, and waits for its end.
    ActionOutcome run(const SearchPathAction& action, std::string_view searchText);

private:
    Desktop& desktop;
    Processes& processes;
    Launcher& launcher;
};

} // namespace kavendra
