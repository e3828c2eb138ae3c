#pragma once

#include "base/Result.h"

#include <sys/types.h>

#include <string>
#include <string_view>

/// Replaces whole files by a temporary file in the same directory and rename(2): readers see the old or the
/// new content, never a part of it, also after a crash or a power cut. On failure the old content is kept.
/// Errors have the text "path: reason".
namespace kavendra {

/// Replaces the content of a text file or creates the file. Follows symbolic links, also to a missing file.
/// Keeps mode, owner and group. Fails for a file that this process may not write.
///
/// The file is written in place if it has several hard links, if its owner or group cannot be kept, or if its
/// directory does not allow creating or renaming files (read-only or sticky directory, bind-mounted file). A
/// full disk is detected before the old content is changed, but a power cut, or a kill during a write of
/// several pages, can leave a mixture of both contents.
Result<void> replaceFile(const std::string& path, std::string_view content);

/// Whether a file is flushed to the disk, which may take long, so that it survives a power cut.
enum class Flush { yes, no };

/// Creates or replaces the file at `path`; a symbolic link is replaced, not followed. The new file has
/// `permissions` without the bits of the process's umask.
Result<void> writeFileAtomically(const std::string& path, std::string_view content, mode_t permissions = 0666,
                                 Flush flush = Flush::yes);

} // namespace kavendra
