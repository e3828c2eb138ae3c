#pragma once

#include <string>
#include <string_view>

/// Paths as text (bytes separated by "/"), and the paths that the system or the user's environment defines.
/// Whether anything exists at a path is not checked.
namespace kavendra {

/// Whether `text` has a NUL byte. System calls and std::filesystem cut a path there, so such a path must be
/// refused.
bool containsNUL(std::string_view text);

/// Returns the part behind the last "/" (trailing slashes disregarded), "/" for the root.
std::string_view lastPathComponent(std::string_view path);

/// Returns `path` without its last component, "/" for a path directly below the root, "." for a bare name.
std::string_view parentPath(std::string_view path);

/// Returns the extension of the last component, without the dot, in ASCII lower case: "csv" for "a/B.CSV".
/// A name that only begins with a dot (".csv") has none.
std::string lowercasedExtension(std::string_view path);

/// Returns `directory` + "/" + `name`; the name alone when the directory is empty.
std::string joinedPath(std::string_view directory, std::string_view name);

/// Replaces a leading "~" or "~user" by that home directory; other paths, and unknown users, stay as they
/// are.
std::string expandingTilde(std::string_view path);

/// Returns `text` as a path typed by a person: trimmed of white space, a leading tilde expanded.
std::string expandedPath(std::string_view text);

/// Returns the home directory: $HOME, else the one of the user database, else "/".
std::string homeDirectory();

/// Returns the directory for a user's temporary files: $TMPDIR, else "/tmp".
std::string temporaryDirectory();

/// Returns the per-user directory below which applications keep their configuration.
/// On freedesktop systems $XDG_CONFIG_HOME, else ~/.config (XDG Base Directory Specification); on macOS
/// ~/Library/Application Support.
std::string applicationSupportDirectory();

/// Returns the absolute path that starts this program again: the running file, or the AppImage it was started
/// from. Empty when the system does not provide it.
std::string executablePath();

} // namespace kavendra
