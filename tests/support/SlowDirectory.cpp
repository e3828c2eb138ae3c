// A library for LD_PRELOAD that delays every access to one directory, as a network drive that has lost its
// server does. SLOW_DIRECTORY is the absolute path of the directory, SLOW_SECONDS the delay of each call. A
// delay ends early, and later calls are not delayed, once the file SLOW_DIRECTORY + ".fast" exists.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

/// Returns the function that this library replaces.
template <typename Function>
Function* original(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isFast(const std::string& directory) {
    return syscall(SYS_faccessat, AT_FDCWD, (directory + ".fast").c_str(), F_OK) == 0;
}

void delay(std::string_view path) {
    static const char* const setting = getenv("SLOW_DIRECTORY");
    if (!setting || !path.starts_with(setting))
        return;
    static const std::string directory = setting;
    if (path.size() > directory.size() && path[directory.size()] != '/')
        return;
    constexpr int stepsInASecond = 50;
    const char* const seconds = getenv("SLOW_SECONDS");
    const int errorBefore = errno;
    for (int step = (seconds ? atoi(seconds) : 0) * stepsInASecond; step > 0 && !isFast(directory); --step)
        usleep(1'000'000 / stepsInASecond);
    errno = errorBefore;
}

std::string pathOf(int descriptor) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const long length = syscall(SYS_readlinkat, AT_FDCWD, link.c_str(), path.data(), path.size());
    return {path.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

/// `path` is relative to the directory `descriptor`.
void delay(int descriptor, const char* path) {
    if (descriptor == AT_FDCWD || *path == '/')
        delay(path);
    else
        delay(pathOf(descriptor) + "/" + path);
}

} // namespace

extern "C" {

// The declarations of the system's headers check the signatures.
#define DELAYED(result, name, parameters, place, arguments)                                                  \
    result name parameters {                                                                                 \
        static const auto next = original(&name, #name);                                                     \
        delay place;                                                                                         \
        return next arguments;                                                                               \
    }

// As DELAYED, for open and openat. The mode exists only for some flags, but a register is passed in any case.
#define DELAYED_OPEN(name, parameters, place, ...)                                                           \
    int name parameters {                                                                                    \
        static const auto next = original(&name, #name);                                                     \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = va_arg(rest, mode_t);                                                            \
        va_end(rest);                                                                                        \
        delay place;                                                                                         \
        return next(__VA_ARGS__, flags, mode);                                                               \
    }

DELAYED_OPEN(open, (const char* path, int flags, ...), (path), path)
DELAYED_OPEN(open64, (const char* path, int flags, ...), (path), path)
DELAYED_OPEN(openat, (int descriptor, const char* path, int flags, ...), (descriptor, path), descriptor, path)
DELAYED_OPEN(openat64, (int descriptor, const char* path, int flags, ...), (descriptor, path), descriptor,
             path)
DELAYED(FILE*, fopen, (const char* path, const char* mode), (path), (path, mode))
DELAYED(FILE*, fopen64, (const char* path, const char* mode), (path), (path, mode))
DELAYED(DIR*, opendir, (const char* path), (path), (path))
DELAYED(DIR*, fdopendir, (int descriptor), (pathOf(descriptor)), (descriptor))
DELAYED(dirent*, readdir, (DIR * directory), (pathOf(dirfd(directory))), (directory))
DELAYED(dirent64*, readdir64, (DIR * directory), (pathOf(dirfd(directory))), (directory))
DELAYED(int, stat, (const char* path, struct stat* status), (path), (path, status))
DELAYED(int, stat64, (const char* path, struct stat64* status), (path), (path, status))
DELAYED(int, lstat, (const char* path, struct stat* status), (path), (path, status))
DELAYED(int, lstat64, (const char* path, struct stat64* status), (path), (path, status))
DELAYED(int, fstatat, (int descriptor, const char* path, struct stat* status, int flags), (descriptor, path),
        (descriptor, path, status, flags))
DELAYED(int, fstatat64, (int descriptor, const char* path, struct stat64* status, int flags),
        (descriptor, path), (descriptor, path, status, flags))
DELAYED(int, statx, (int descriptor, const char* path, int flags, unsigned mask, struct statx* status),
        (descriptor, path), (descriptor, path, flags, mask, status))
DELAYED(int, access, (const char* path, int mode), (path), (path, mode))
DELAYED(int, faccessat, (int descriptor, const char* path, int mode, int flags), (descriptor, path),
        (descriptor, path, mode, flags))
DELAYED(int, mkdir, (const char* path, mode_t mode), (path), (path, mode))
DELAYED(char*, realpath, (const char* path, char* resolved), (path), (path, resolved))
DELAYED(ssize_t, readlink, (const char* path, char* buffer, size_t size), (path), (path, buffer, size))
DELAYED(int, chdir, (const char* path), (path), (path))

} // extern "C"
