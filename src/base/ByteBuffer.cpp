#include "base/ByteBuffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace kavendra {

namespace {

/// From here on a buffer has a mapping of its own: about the size at which whole huge pages fit into it.
constexpr std::size_t mappedFrom = std::size_t{4} << 20;

bool isMapped(std::size_t capacity) {
    return capacity >= mappedFrom;
}

std::size_t mappingSize(std::size_t capacity) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return (capacity + ByteBuffer::padding + page - 1) / page * page;
}

char* allocate(std::size_t capacity) {
    if (capacity > std::numeric_limits<std::size_t>::max() / 2)
        throw std::bad_alloc();
    if (!isMapped(capacity)) {
        auto* bytes = static_cast<char*>(std::malloc(capacity + ByteBuffer::padding));
        if (!bytes)
            throw std::bad_alloc();
        return bytes;
    }
    const std::size_t size = mappingSize(capacity);
    void* mapping = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED)
        throw std::bad_alloc();
#ifdef MADV_HUGEPAGE
    madvise(mapping, size, MADV_HUGEPAGE); // Only advice: small pages work as well, slower.
#endif
    return static_cast<char*>(mapping);
}

void release(char* bytes, std::size_t capacity) {
    if (!bytes)
        return;
    if (isMapped(capacity))
        munmap(bytes, mappingSize(capacity));
    else
        std::free(bytes);
}

} // namespace

ByteBuffer::ByteBuffer(std::size_t capacity) : bytes(allocate(capacity)), room(capacity) {
    setSize(0);
}

ByteBuffer::ByteBuffer(std::string_view content) : ByteBuffer(content.size()) {
    append(content);
}

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : bytes(std::exchange(other.bytes, nullptr)), length(std::exchange(other.length, 0)),
      room(std::exchange(other.room, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    if (this != &other) {
        release(bytes, room);
        bytes = std::exchange(other.bytes, nullptr);
        length = std::exchange(other.length, 0);
        room = std::exchange(other.room, 0);
    }
    return *this;
}

ByteBuffer::~ByteBuffer() {
    release(bytes, room);
}

void ByteBuffer::setSize(std::size_t size) {
    if (!bytes)
        return;
    length = std::min(size, room);
    std::memset(bytes + length, 0, padding);
}

void ByteBuffer::reserve(std::size_t capacity) {
    if (bytes && capacity <= room)
        return;
#ifdef MREMAP_MAYMOVE
    if (bytes && isMapped(room)) {
        // Moves the pages, not the bytes, so the old and the new ones never stand side by side.
        void* mapping = capacity > std::numeric_limits<std::size_t>::max() / 2
                            ? MAP_FAILED
                            : mremap(bytes, mappingSize(room), mappingSize(capacity), MREMAP_MAYMOVE);
        if (mapping == MAP_FAILED)
            throw std::bad_alloc();
        bytes = static_cast<char*>(mapping);
        room = capacity;
        return;
    }
#endif
    ByteBuffer larger(capacity);
    larger.append(view());
    *this = std::move(larger);
}

void ByteBuffer::append(std::string_view more) {
    if (more.empty())
        return;
    if (more.size() > room - length) {
        // `more` may be a part of this buffer, so the old bytes live until it is copied.
        ByteBuffer larger(std::max(length + more.size(), length + length / 2));
        larger.append(view());
        larger.append(more);
        *this = std::move(larger);
        return;
    }
    std::memmove(bytes + length, more.data(), more.size());
    setSize(length + more.size());
}

void ByteBuffer::shrinkToFit() {
    if (!bytes || length == room)
        return;
    if (!isMapped(length)) {
        *this = ByteBuffer(view());
        return;
    }
    const std::size_t kept = mappingSize(length);
    if (kept < mappingSize(room))
        munmap(bytes + kept, mappingSize(room) - kept);
    room = length;
}

} // namespace kavendra
