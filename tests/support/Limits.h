#pragma once

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>

/// Limits of the system that apply to this process during the lifetime of an object.
namespace kavendra {

class ScopedFileSizeLimit {
public:
    explicit ScopedFileSizeLimit(rlim_t bytes) : m_handlerBefore(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~ScopedFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handlerBefore);
    }

private:
    void (*m_handlerBefore)(int);
    rlimit m_before{};
};

/// Limits the address space to the current size plus `room` bytes. Under sanitizers a failing operator new
/// ends the program, so only a ByteBuffer may exceed the limit there.
class ScopedMemoryLimit {
public:
    explicit ScopedMemoryLimit(std::size_t room) {
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        getrlimit(RLIMIT_AS, &m_before);
        const rlimit limit{pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + room, m_before.rlim_max};
        setrlimit(RLIMIT_AS, &limit);
    }
    ~ScopedMemoryLimit() { setrlimit(RLIMIT_AS, &m_before); }

private:
    rlimit m_before{};
};

/// Makes root the user "nobody", because permissions do not apply to root.
class ScopedOrdinaryUser {
public:
    ScopedOrdinaryUser() : m_wasRoot(geteuid() == 0 && seteuid(nobody) == 0) {}
    /// Makes `directory` the user's own.
    explicit ScopedOrdinaryUser(const std::string& directory)
        : m_wasRoot(geteuid() == 0 && chown(directory.c_str(), nobody, nobody) == 0 && seteuid(nobody) == 0) {
    }
    ~ScopedOrdinaryUser() {
        if (m_wasRoot && seteuid(0) != 0)
            std::abort();
    }

private:
    static constexpr uid_t nobody = 65534;
    bool m_wasRoot;
};

/// A mount, by the arguments of mount(2). Needs root; check isMounted().
class ScopedMount {
public:
    ScopedMount(const std::string& source, std::string path, const char* type, unsigned long flags = 0,
                const char* options = nullptr)
        : m_path(std::move(path)),
          m_isMounted(mount(source.c_str(), m_path.c_str(), type, flags, options) == 0) {}
    ~ScopedMount() {
        if (m_isMounted)
            umount(m_path.c_str());
    }

    bool isMounted() const { return m_isMounted; }

private:
    std::string m_path;
    bool m_isMounted;
};

} // namespace kavendra
