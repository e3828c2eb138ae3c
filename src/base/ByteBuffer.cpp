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

/// The smallest capacity with its own memory mapping: large enough for whole huge pages.
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
    madvise(mapping, size, MADV_HUGEPAGE); // may fail; small pages are only slower
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

ByteBuffer::ByteBuffer(std::size_t capacity) : m_bytes(allocate(capacity)), m_capacity(capacity) {
    setSize(0);
}

ByteBuffer::ByteBuffer(std::string_view content) : ByteBuffer(content.size()) {
    append(content);
}

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : m_bytes(std::exchange(other.m_bytes, nullptr)), m_size(std::exchange(other.m_size, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    if (this != &other) {
        release(m_bytes, m_capacity);
        m_bytes = std::exchange(other.m_bytes, nullptr);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
    }
    return *this;
}

ByteBuffer::~ByteBuffer() {
    release(m_bytes, m_capacity);
}

void ByteBuffer::setSize(std::size_t size) {
    if (!m_bytes)
        return;
    m_size = std::min(size, m_capacity);
    std::memset(m_bytes + m_size, 0, padding);
}

void ByteBuffer::reserve(std::size_t capacity) {
    if (m_bytes && capacity <= m_capacity)
        return;
#ifdef MREMAP_MAYMOVE
    if (m_bytes && isMapped(m_capacity)) {
        // Moves the pages instead of copying the bytes, so both never need memory at once.
        void* mapping = capacity > std::numeric_limits<std::size_t>::max() / 2
                            ? MAP_FAILED
                            : mremap(m_bytes, mappingSize(m_capacity), mappingSize(capacity), MREMAP_MAYMOVE);
        if (mapping == MAP_FAILED)
            throw std::bad_alloc();
        m_bytes = static_cast<char*>(mapping);
        m_capacity = capacity;
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
    if (more.size() > m_capacity - m_size) {
        // `more` may be part of this buffer, so the old bytes are kept until it is copied.
        ByteBuffer larger(std::max(m_size + more.size(), m_size + m_size / 2));
        larger.append(view());
        larger.append(more);
        *this = std::move(larger);
        return;
    }
    std::memmove(m_bytes + m_size, more.data(), more.size());
    setSize(m_size + more.size());
}

void ByteBuffer::shrinkToFit() {
    if (!m_bytes || m_size == m_capacity)
        return;
    if (!isMapped(m_size)) {
        *this = ByteBuffer(view());
        return;
    }
    const std::size_t kept = mappingSize(m_size);
    if (kept < mappingSize(m_capacity))
        munmap(m_bytes + kept, mappingSize(m_capacity) - kept);
    m_capacity = m_size;
}

} // namespace kavendra
