#include "platform/ReservedSpace.h"

#include <fcntl.h>

#include <cerrno>

namespace kavendra {

int reserveSpace(int fileDescriptor, std::size_t size) {
    if (size == 0)
        return 0;
    int reason = 0;
    do
        reason = posix_fallocate(fileDescriptor, 0, static_cast<off_t>(size));
    while (reason == EINTR);
    // Some network file systems cannot reserve; writing is then all there is.
    return reason == EOPNOTSUPP || reason == EINVAL ? 0 : reason;
}

} // namespace kavendra
