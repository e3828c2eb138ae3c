#include "platform/ReservedSpace.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace kavendra {

int reserveSpace(int fileDescriptor, std::size_t size) {
    struct stat status{};
    if (fstat(fileDescriptor, &status) != 0)
        return errno;
    const auto wanted = static_cast<off_t>(size);
    if (wanted <= status.st_size)
        return 0;
    fstore_t store{};
    store.fst_flags = F_ALLOCATEALL;
    store.fst_posmode = F_PEOFPOSMODE;
    store.fst_length = wanted - status.st_size;
    if (fcntl(fileDescriptor, F_PREALLOCATE, &store) != 0 && errno != ENOTSUP)
        return errno;
    return 0;
}

} // namespace kavendra
