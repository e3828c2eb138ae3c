#pragma once

#include "config/LaunchSettings.h"
#include "launch/Launcher.h"

#include <optional>
#include <string>
#include <string_view>

/// The typed path: the file or directory that the text of the search field names. Each call asks the file
/// system again. Returned paths are absolute, so that a program does not take one for an option.
namespace kavendra {

/// Returns the path that `text` names once expanded (see expandedPath), nothing when it does not exist.
std::optional<std::string> existingPathOf(std::string_view text);

/// Returns the existing path that the text of the search field names, with or without quotes around it.
std::optional<std::string> typedPathOf(std::string_view searchText);

/// Returns the typed path unless it is a directory.
std::optional<std::string> typedPathFileOf(std::string_view searchText);

/// Returns the typed path if it is a directory, else the directory that contains it.
std::optional<std::string> typedPathDirectoryOf(std::string_view searchText);

/// The actions on the typed path. Each reports a status message that begins with "No" when the text does not
/// name what it needs. They may be called on any thread, at the same time.
class TypedPathActions {
public:
    /// All three must outlive this.
    TypedPathActions(Desktop& desktop, Processes& processes, Launcher& launcher)
        : m_desktop(desktop), m_processes(processes), m_launcher(launcher) {}

    ActionOutcome openWithAssociatedApplication(std::string_view searchText);
    ActionOutcome openDirectoryInFinder(std::string_view searchText);
    ActionOutcome openDirectoryInTerminal(std::string_view searchText);
    ActionOutcome copyDirectory(std::string_view searchText);
    ActionOutcome copyFileName(std::string_view searchText);

    /// Whether the text names the target of a configured action and the action's program exists.
    bool canRun(const SearchPathAction& action, std::string_view searchText) const;
    /// Starts the program with the file or the directory; its end must be waited for.
    ActionOutcome run(const SearchPathAction& action, std::string_view searchText);

private:
    Desktop& m_desktop;
    Processes& m_processes;
    Launcher& m_launcher;
};

} // namespace kavendra
