#pragma once

#include <cstddef>
#include <string_view>

namespace kavendra {

/// Owned bytes: a file that was read, or an arena of text that rows point into. Moves without copying.
///
/// Large buffers live in memory of their own, in huge pages where the system has them, because page
/// faults are most of the cost of reading a large file. `padding` zero bytes may be read past the end,
/// so that a scan in blocks needs no special case for the last one.
class ByteBuffer {
public:
    static constexpr std::size_t padding = 64;

    ByteBuffer() = default;
    /// Room for `capacity` bytes, none of them used yet. Throws std::bad_alloc.
    explicit ByteBuffer(std::size_t capacity);
    /// A copy of `bytes`.
    explicit ByteBuffer(std::string_view bytes);
    ByteBuffer(ByteBuffer&& other) noexcept;
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    ~ByteBuffer();

    char* data() { return bytes; }
    const char* data() const { return bytes; }
    std::size_t size() const { return length; }
    std::size_t capacity() const { return room; }
    std::string_view view() const { return {bytes, length}; }

    /// Sets the size, at most the capacity; the bytes that are new are not initialised, the padding is.
    void setSize(std::size_t size);
    /// Makes the capacity at least `capacity`, keeping the bytes. Throws std::bad_alloc.
    void reserve(std::size_t capacity);
    /// Appends, growing by half when there is no room. Throws std::bad_alloc.
    void append(std::string_view more);
    /// Gives memory behind the last byte back to the system.
    void shrinkToFit();

private:
    char* bytes = nullptr;
    std::size_t length = 0;
    std::size_t room = 0;
};

} // namespace kavendra
