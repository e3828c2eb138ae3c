#include "platform/PrivateDirectory.h"

#include "platform/FileDescriptor.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdlib>

namespace kavendra {

namespace {

/// Takes everybody else's permissions for a directory away. Returns whether it is a directory of this user.
bool makePrivate(const std::string& path) {
    const auto directory = openFile(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    struct stat status{};
    return directory && fstat(directory->get(), &status) == 0 && status.st_uid == geteuid() &&
           fchmod(directory->get(), 0700) == 0;
}

} // namespace

Result<std::string> privateDirectory(const std::string& path) {
    if (path.find('\0') != std::string::npos)
        return systemFailure(path, EINVAL);
    if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return systemFailure(path, errno);
    if (makePrivate(path))
        return path;
    std::string unique = path + "-XXXXXX";
    if (!mkdtemp(unique.data()))
        return systemFailure(path, errno);
    return unique;
}

} // namespace kavendra
