#pragma once

#include "base/Result.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <utility>

namespace kavendra {

/// Owns a file descriptor and closes it; negative when there is none.
class FileDescriptor {
public:
    explicit FileDescriptor(int number = -1) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~FileDescriptor() { close(); }

    int get() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

    /// Passes ownership of the descriptor to the caller.
    int release() { return std::exchange(m_number, -1); }

    void close() {
        if (m_number >= 0)
            ::close(std::exchange(m_number, -1));
    }

private:
    int m_number;
};

/// Opens a file; `flags` and `permissions` as for open(2). Does not wait for the other end of a pipe. Started
/// programs do not inherit the descriptor.
Result<FileDescriptor> openFile(const std::string& path, int flags, mode_t permissions = 0);

/// Returns the status of an open regular file. Fails with EISDIR for a directory, with EINVAL for other
/// types.
Result<struct stat> regularFileStatus(const FileDescriptor& file, const std::string& path);

/// Writes all of `content` at the file's position. `path` is for the error text.
Result<void> writeAll(const FileDescriptor& file, const std::string& path, std::string_view content);

} // namespace kavendra
