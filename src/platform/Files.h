#pragma once

#include "base/ByteBuffer.h"
#include "base/Result.h"
#include "platform/FileDescriptor.h"

#include <string>
#include <vector>

/// Access to files by path. A path with a NUL byte never exists; functions that use it fail with EINVAL.
/// Errors have the text "path: reason", the reason in strerror's words.
namespace kavendra {

bool exists(const std::string& path);
bool isDirectory(const std::string& path);
/// Whether `path` is an existing directory whose path ends with ".app" in any letter case: an application on
/// macOS.
bool isApplicationDirectory(const std::string& path);
/// Whether this process may execute the file at `path`; false for a directory.
bool isExecutableFile(const std::string& path);

/// Returns `path` as an absolute path, without empty and "." components. A ".." is kept: after a symbolic
/// link it is not the inverse of the component before it. Returns `path` itself if the current directory is
/// unknown.
std::string absolutePath(const std::string& path);

/// Opens a regular file of at most `maximumSize` bytes for reading. Fails without reading for other types (a
/// directory, a pipe, a device) and for a larger file (EFBIG).
Result<FileDescriptor> openRegularFile(const std::string& path, std::size_t maximumSize);

/// Reads a whole file. Same errors as openRegularFile.
Result<ByteBuffer> readFile(const std::string& path, std::size_t maximumSize);

/// Creates a directory and its missing parents; no error if it exists.
Result<void> createDirectories(const std::string& path);

/// Creates a directory that only this user can enter (mode 0700), or restricts an existing one, and returns
/// its path. That is `path`, or a new unguessable name beside it when `path` is a link, a file or a directory
/// of another user.
Result<std::string> privateDirectory(const std::string& path);

/// Creates a file without a name in the temporary directory, for reading and writing. Programs that are
/// started do not inherit it.
Result<FileDescriptor> unnamedTemporaryFile();

/// Returns the names of all entries of a directory, also hidden ones, in no particular order.
Result<std::vector<std::string>> listDirectory(const std::string& path);

/// Copies the content of a regular file to a new file with mode 0600. Fails with EEXIST if `destination`
/// exists. An incomplete copy is removed.
Result<void> copyFile(const std::string& source, const std::string& destination);

/// Sets the permissions of a file or directory; `permissions` as for chmod(2).
Result<void> setPermissions(const std::string& path, unsigned permissions);

/// Removes a file; no error if there is none.
Result<void> removeFile(const std::string& path);

/// Appends to an existing regular file.
Result<void> appendToFile(const std::string& path, std::string_view content);

} // namespace kavendra
