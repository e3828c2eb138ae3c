#pragma once

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <string>

/// Real limits of the system, put on this process for as long as the object lives.
namespace kavendra {

/// No file may become longer than this.
class ScopedFileSizeLimit {
public:
    explicit ScopedFileSizeLimit(rlim_t bytes) : previousHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &previous);
        const rlimit limit{bytes, previous.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~ScopedFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, previousHandler);
    }

private:
    void (*previousHandler)(int);
    rlimit previous{};
};

/// Root may do everything, so permissions are tried as the user "nobody", who then owns `directory`.
class ScopedOrdinaryUser {
public:
    explicit ScopedOrdinaryUser(const std::string& directory) {
        if (geteuid() == 0 && chown(directory.c_str(), nobody, nobody) == 0 && seteuid(nobody) == 0)
            wasRoot = true;
    }
    ~ScopedOrdinaryUser() {
        if (wasRoot && seteuid(0) != 0)
            std::abort();
    }

private:
    static constexpr uid_t nobody = 65534;
    bool wasRoot = false;
};

/// A file system of a few bytes, mounted on a directory; needs root.
class SmallFileSystem {
public:
    SmallFileSystem(std::string directory, std::size_t bytes)
        : directory(std::move(directory)), mounted(mount("tmpfs", this->directory.c_str(), "tmpfs", 0,
                                                         ("size=" + std::to_string(bytes)).c_str()) == 0) {}
    ~SmallFileSystem() {
        if (mounted)
            umount(directory.c_str());
    }

    bool isMounted() const { return mounted; }

private:
    std::string directory;
    bool mounted;
};

} // namespace kavendra
