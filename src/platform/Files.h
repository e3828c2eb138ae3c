#pragma once

#include "base/ByteBuffer.h"
#include "base/Result.h"
#include "platform/FileDescriptor.h"

#include <string>
#include <vector>

/// Files by path. A path that holds a NUL byte names nothing: it never exists, and acting on it fails with
/// EINVAL. Every failure names the path and the system's reason.
namespace kavendra {

bool exists(const std::string& path);
bool isDirectory(const std::string& path);
/// Whether `path` is an existing directory whose path ends with ".app" in any letter case: an application on
/// macOS.
bool isApplicationDirectory(const std::string& path);
/// Whether `path` is a file that this process may execute (a directory is not).
bool isExecutableFile(const std::string& path);

/// Returns `path` from the root on, without empty and "." components. A ".." stays, because behind a link it
/// does not lead back. A path that cannot be made absolute comes back as it is.
std::string absolutePath(const std::string& path);

/// Opens a regular file of at most `maximumSize` bytes for reading. Anything that is not a regular file (a
/// directory, a pipe, a device) fails at once, without being read; so does a larger file (EFBIG).
Result<FileDescriptor> openRegularFile(const std::string& path, std::size_t maximumSize);

/// Reads the whole of what openRegularFile opens.
Result<ByteBuffer> readFile(const std::string& path, std::size_t maximumSize);

/// Creates the directory with all that is missing above it; an existing directory is no error.
Result<void> createDirectories(const std::string& path);

/// Creates a directory that only this user can enter (mode 0700), or restricts an existing one, and returns
/// its path. That is `path`, or a new unguessable name beside it when `path` is a link, a file or a directory
/// of another user.
Result<std::string> privateDirectory(const std::string& path);

/// Returns the names of the entries of a directory, hidden ones included, in no order.
Result<std::vector<std::string>> listDirectory(const std::string& path);

/// Copies the content of a regular file to a new file, which only its owner may read and write. Fails when
/// something stands at `destination` (EEXIST); a copy that fails half-way is removed.
Result<void> copyFile(const std::string& source, const std::string& destination);

/// Sets the permissions of a file or directory; `permissions` are the POSIX bits, as for chmod.
Result<void> setPermissions(const std::string& path, unsigned permissions);

/// Removes a file; a missing one is no error.
Result<void> removeFile(const std::string& path);

/// Appends to an existing regular file.
Result<void> appendToFile(const std::string& path, std::string_view content);

} // namespace kavendra
