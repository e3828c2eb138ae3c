#pragma once

#include <cstddef>
#include <string_view>

namespace kavendra {

/// Owned bytes: the content of a file, or the text that items refer to. Moved without copying.
///
/// Large buffers have their own memory mapping, in huge pages where available, because page faults are most
/// of the cost of reading a large file. `padding` zero bytes after the end may be read, so that a scan in
/// blocks needs no special case for the last block.
class ByteBuffer {
public:
    static constexpr std::size_t padding = 64;

    ByteBuffer() = default;
    /// Reserves `capacity` bytes; the size is 0. Throws std::bad_alloc.
    explicit ByteBuffer(std::size_t capacity);
    /// Copies `bytes`. Throws std::bad_alloc.
    explicit ByteBuffer(std::string_view bytes);
    ByteBuffer(ByteBuffer&& other) noexcept;
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ByteBuffer(const ByteBuffer&) = delete;
    ByteBuffer& operator=(const ByteBuffer&) = delete;
    ~ByteBuffer();

    char* data() { return m_bytes; }
    const char* data() const { return m_bytes; }
    std::size_t size() const { return m_size; }
    std::size_t capacity() const { return m_capacity; }
    std::string_view view() const { return {m_bytes, m_size}; }

    /// Sets the size, at most to the capacity. New bytes are not initialised; the padding is set to zero.
    void setSize(std::size_t size);
    /// Increases the capacity to at least `capacity`. Throws std::bad_alloc.
    void reserve(std::size_t capacity);
    /// Appends bytes, also of this buffer; grows by half when necessary. Throws std::bad_alloc.
    void append(std::string_view more);
    /// Releases unused capacity.
    void shrinkToFit();

private:
    char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace kavendra
