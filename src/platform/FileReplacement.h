#pragma once

#include "base/Result.h"

#include <sys/types.h>

#include <string>
#include <string_view>

/// Writing whole files through a temporary file beside them: a reader, a killed process and a power cut find
/// the old content or the new, never a part. Failures name the path and the system's reason, and leave the
/// old content whole.
namespace kavendra {

/// Replaces the content of a text file, creating it when missing. Links are followed, also to a file that is
/// missing; the mode, the owner and the group stay. A file that this process may not write is not replaced.
///
/// The file is written in place where it has several hard links, where its owner or group cannot be kept, or
/// where its directory lets no file be made or renamed (a read-only or sticky directory, a bind-mounted
/// file). A full disk does no harm there either, but a power cut, or a kill in a write of several pages, can
/// leave a mixture.
Result<void> replaceFile(const std::string& path, std::string_view content);

/// Puts a new file at `path`; a link there is replaced, not followed. `permissions` are those of the new
/// file, less the process's umask.
Result<void> writeFileAtomically(const std::string& path, std::string_view content,
                                 mode_t permissions = 0666);

} // namespace kavendra
