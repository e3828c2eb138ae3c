#pragma once

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
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

/// The process may take no more than `room` bytes of address space besides what it has. The sanitizers end
/// the program when operator new gets none, so under them only a ByteBuffer may run out.
class ScopedMemoryLimit {
public:
    explicit ScopedMemoryLimit(std::size_t room) {
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &previous);
        const rlimit limit{pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + room, previous.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~ScopedMemoryLimit() { setrlimit(RLIMIT_AS, &previous); }

private:
    rlimit previous{};
};

/// Root may do everything, so permissions are tried as the user "nobody".
class ScopedOrdinaryUser {
public:
    ScopedOrdinaryUser() : wasRoot(geteuid() == 0 && seteuid(nobody) == 0) {}
    /// Makes `directory` the user's own.
    explicit ScopedOrdinaryUser(const std::string& directory)
        : wasRoot(geteuid() == 0 && chown(directory.c_str(), nobody, nobody) == 0 && seteuid(nobody) == 0) {}
    ~ScopedOrdinaryUser() {
        if (wasRoot && seteuid(0) != 0)
            std::abort();
    }

private:
    static constexpr uid_t nobody = 65534;
    bool wasRoot;
};

/// Something mounted on a path, with the arguments of mount(2); needs root.
class ScopedMount {
public:
    ScopedMount(const std::string& source, std::string path, const char* type, unsigned long flags = 0,
                const char* options = nullptr)
        : path(std::move(path)),
          mounted(mount(source.c_str(), this->path.c_str(), type, flags, options) == 0) {}
    ~ScopedMount() {
        if (mounted)
            umount(path.c_str());
    }

    bool isMounted() const { return mounted; }

private:
    std::string path;
    bool mounted;
};

} // namespace kavendra
