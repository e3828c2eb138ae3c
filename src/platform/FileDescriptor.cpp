#include "platform/FileDescriptor.h"

#include "platform/Paths.h"

#include <fcntl.h>

#include <cerrno>

namespace kavendra {

Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t permissions) {
    if (containsNUL(path))
        return systemFailure(path, EINVAL);
    FileDescriptor file(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, permissions));
    if (!file)
        return systemFailure(path, errno);
    return file;
}

Result<struct stat> regularFileStatus(const FileDescriptor& file, const std::string& path) {
    struct stat status{};
    if (fstat(file.get(), &status) != 0)
        return systemFailure(path, errno);
    if (S_ISDIR(status.st_mode))
        return systemFailure(path, EISDIR);
    if (!S_ISREG(status.st_mode))
        return systemFailure(path, EINVAL);
    return status;
}

Result<void> writeAll(const FileDescriptor& file, const std::string& path, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file.get(), content.data(), content.size());
        if (written < 0 && errno != EINTR)
            return systemFailure(path, errno);
        if (written > 0)
            content.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

} // namespace kavendra
