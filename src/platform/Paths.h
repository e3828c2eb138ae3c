#pragma once

#include <string>
#include <string_view>

/// Paths as text (bytes separated by "/"), and the paths that the system or the user's environment defines.
/// Whether anything exists at a path is not checked.
namespace kavendra {

/// Whether `text` has a NUL byte. System calls and std::filesystem cut a path there, so such a path must be
/// refused.
bool containsNUL(std::string_view text);

/// Returns the part after the last "/", ignoring trailing slashes; "/" for the root.
std::string_view lastPathComponent(std::string_view path);

/// Returns `path` without its last component, "/" for a path directly below the root, "." for a bare name.
std::string_view parentPath(std::string_view path);

/// Returns the extension of the last component, without the dot, in ASCII lower case: "csv" for "a/B.CSV". A
/// dot at the beginning of the name (".csv") begins no extension.
std::string lowercasedExtension(std::string_view path);

/// Returns `directory` + "/" + `name`; the name alone when the directory is empty.
std::string joinedPath(std::string_view directory, std::string_view name);

/// Replaces a leading "~" or "~user" by that user's home directory. Other paths, and those of unknown users,
/// are returned unchanged.
std::string expandingTilde(std::string_view path);

/// Removes white space around a path that a user has typed and expands a leading tilde.
std::string expandedPath(std::string_view text);

/// Returns the home directory: $HOME, else from the user database, else "/".
std::string homeDirectory();

/// Returns the directory for temporary files: $TMPDIR, else "/tmp".
std::string temporaryDirectory();

/// Returns the per-user directory below which applications keep their configuration. On freedesktop systems
/// $XDG_CONFIG_HOME, else ~/.config (XDG Base Directory Specification); on macOS ~/Library/Application
/// Support.
std::string applicationSupportDirectory();

/// Returns the directory of the running program file, beside which its resources are. Empty when the system
/// does not provide it.
std::string programDirectory();

/// Returns the absolute path that starts this program again: the running file, or the AppImage it was started
/// from. Empty when the system does not provide it.
std::string executablePath();

} // namespace kavendra
