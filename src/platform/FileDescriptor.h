#pragma once

#include "base/Result.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <utility>

namespace kavendra {

/// An open file descriptor, closed when this goes away; negative when there is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const { return number; }
    explicit operator bool() const { return number >= 0; }

    /// Gives the descriptor to a caller who closes it.
    int release() { return std::exchange(number, -1); }

    void close() {
        if (number >= 0)
            ::close(std::exchange(number, -1));
    }

private:
    int number;
};

/// Opens a file; `flags` and `permissions` as for open(2). Never waits for the other end of a pipe, and no
/// started program inherits the descriptor.
Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t permissions = 0);

/// Returns the status of an open regular file. Fails for anything else: EISDIR for a directory, else EINVAL.
Result<struct stat> regularFileStatus(const FileDescriptor& file, const std::string& path);

/// Writes all of `content` at the file's position; `path` is what a failure names.
Result<void> writeAll(const FileDescriptor& file, const std::string& path, std::string_view content);

} // namespace kavendra
