#pragma once

#include <unistd.h>

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

} // namespace kavendra
