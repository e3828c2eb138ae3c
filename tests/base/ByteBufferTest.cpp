#include "base/ByteBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace kavendra {

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;

/// Sizes below and above the one from which a buffer is mapped separately.
constexpr std::size_t sizes[] = {0, 1, 4096, 4 * mebibyte - 1, 4 * mebibyte, 9 * mebibyte + 5};

std::string pattern(std::size_t size) {
    std::string text(size, 0);
    for (std::size_t i = 0; i < size; ++i)
        text[i] = static_cast<char>(i * 31 + i / 251 + 1);
    return text;
}

bool isPadded(const ByteBuffer& buffer) {
    const char* end = buffer.data() + buffer.size();
    return std::all_of(end, end + ByteBuffer::padding, [](char byte) { return byte == 0; });
}

} // namespace

TEST(ByteBuffer, keepsItsBytesWhenResizedOrMoved) {
    for (const std::size_t size : sizes) {
        SCOPED_TRACE(size);
        const std::string text = pattern(size);
        ByteBuffer buffer{std::string_view(text)};
        buffer.reserve(size + 5 * mebibyte);
        EXPECT_EQ(buffer.view(), text);
        EXPECT_TRUE(isPadded(buffer));
        buffer.shrinkToFit();
        EXPECT_EQ(buffer.view(), text);
        EXPECT_EQ(buffer.capacity(), size);
        EXPECT_TRUE(isPadded(buffer));

        ByteBuffer moved(std::move(buffer));
        buffer = ByteBuffer(std::string_view("other"));
        std::swap(buffer, moved);
        EXPECT_EQ(buffer.view(), text);
        EXPECT_EQ(moved.view(), "other");
    }
}

TEST(ByteBuffer, appendsAlsoItsOwnBytes) {
    ByteBuffer buffer;
    std::string expected;
    buffer.append("");
    EXPECT_EQ(buffer.view(), "");
    while (expected.size() < 9 * mebibyte) {
        buffer.append("abc");
        buffer.append(buffer.view());
        expected += "abc";
        expected += std::string(expected);
        ASSERT_TRUE(isPadded(buffer));
    }
    EXPECT_EQ(buffer.view(), expected);
}

} // namespace kavendra
