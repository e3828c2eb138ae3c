#include "base/TextDecoding.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

using namespace std::string_view_literals;

TEST(DecodeText, usesTheFirstEncodingInWhichAllBytesAreValid) {
    struct Case {
        const char* name;
        std::string_view bytes;
        std::optional<std::string_view> expected;
    };
    const Case cases[] = {
        {"empty", "", ""},
        {"ASCII with NUL", "a\0b\x7F\x1A"sv, "a\0b\x7F\x1A"sv},
        {"UTF-8", "caf\xC3\xA9 あ", "café あ"},
        {"UTF-8 BOM", "\xEF\xBB\xBFTitle", "Title"},
        {"UTF-8 BOM alone", "\xEF\xBB\xBF", ""},
        {"only the first BOM is dropped", "\xEF\xBB\xBF\xEF\xBB\xBF!", "\xEF\xBB\xBF!"},
        {"valid UTF-8 that is also Shift JIS", "\xE3\x81\x82", "あ"},
        {"Shift JIS", "\x83\x65\x83\x58\x83\x67,\x93\xFA\x96\x7B", "テスト,日本"},
        {"Shift JIS, second byte 0x5C", "\x95\x5C C:\\x~", "表 C:\\x~"},
        {"Shift JIS, half-width", "\xB1\xB2 \x82\xA0", "ｱｲ あ"},
        {"Shift JIS, control characters", "\x82\xA0\x1A\x1C\x7F", "あ\x1A\x1C\x7F"},
        {"Shift JIS, extended by NEC and IBM", "\x87\x40\xFB\xFC", "①髙"},
        {"EUC-JP that is also Shift JIS", "\xA4\xA2", "､｢"},
        {"EUC-JP, bytes that Shift JIS lacks", "\xB0\xFE\xC6\xFC", "蔭日"},
        {"EUC-JP, JIS X 0212", "\x8F\xB0\xA1\\ \xB0\xFE", "丂\\ 蔭"},
        {"0x85 is not EUC-JP", "\xB0\xFE\x85", std::nullopt},
        {"UTF-16 BOM, little-endian", "\xFF\xFET\0B0"sv, "Tあ"},
        {"UTF-16 BOM, big-endian", "\xFE\xFF\0T0B"sv, "Tあ"},
        {"UTF-16 BOM alone", "\xFF\xFE"sv, ""},
        {"UTF-16 surrogate pair", "\xFF\xFE\x3D\xD8\x00\xDE"sv, "😀"},
        {"UTF-16 BOM, odd length", "\xFF\xFET\0B"sv, std::nullopt},
        {"UTF-16 BOM, unpaired lead", "\xFF\xFE\x3D\xD8T\0"sv, std::nullopt},
        {"UTF-16 BOM, lead at the end", "\xFF\xFE\x3D\xD8"sv, std::nullopt},
        {"UTF-16 BOM, unpaired trail", "\xFE\xFF\xDE\0\0T"sv, std::nullopt},
        {"UTF-16LE without BOM", "\xFF\0,\0\xE9\0"sv, "ÿ,é"},
        {"UTF-16BE, unpaired as little-endian", "\xFF\x21\0,\x00\xD8"sv, "Ａ,Ø"},
        {"UTF-16BE, no separator as little-endian", "\xFF\x21\0\n"sv, "Ａ\n"},
        {"Windows-1252 of even length", "Title,Command\nB\xFCro,xy\n", std::nullopt},
        {"one byte of no encoding", "\xFF", std::nullopt},
        {"three bytes of no encoding", "\xFF\xFF\xFF", std::nullopt},
        {"0x80, 0xA0 and 0xFD are not Shift JIS", "\x80\xA0\xFD", std::nullopt},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::optional<ByteBuffer> text = decodeText(ByteBuffer(each.bytes));
        EXPECT_EQ(text ? std::optional(text->view()) : std::nullopt, each.expected);
    }
}

TEST(DecodeText, keepsSurrogatePairsThatPiecesOfTheConversionSplit) {
    // Pairs at odd and even positions: one of the texts has a pair at the end of every piece.
    for (std::string expected : {"", "x"}) {
        std::string bytes = "\xFF\xFE" + expected + std::string(expected.size(), '\0');
        for (std::size_t i = 0; i < 50'000; ++i) {
            bytes += "\x3D\xD8\x00\xDE"sv;
            expected += "😀";
        }
        const std::optional<ByteBuffer> text = decodeText(ByteBuffer(bytes));
        ASSERT_TRUE(text);
        EXPECT_TRUE(text->view() == expected);
    }
}

TEST(DecodeText, returnsUTF8InTheSameMemory) {
    ByteBuffer bytes{"plain"sv};
    const char* const before = bytes.data();
    EXPECT_EQ(decodeText(std::move(bytes))->data(), before);
}

TEST(IsValidUTF8, rejectsInvalidBytesAtEveryPositionOfABlock) {
    const std::string_view valid[] = {
        "é",           "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF",
        "\xEF\xBF\xBF"};
    const std::string_view invalid[] = {
        "\x80",         "\xC0\x80",         "\xC1\xBF",         "\xE0\x9F\xBF",
        "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80",
        "\xC3",         "\xE3\x81",         "\xF0\x9F\x98",     "\xE3\x81\xC3\xA9",
        "\xFF"};
    for (std::size_t before = 0; before < 130; ++before)
        for (const std::size_t after : {0U, 1U, 70U}) {
            const auto placed = [&](std::string_view piece) {
                return std::string(before, 'a').append(piece).append(after, 'b');
            };
            for (const std::string_view piece : valid)
                ASSERT_TRUE(isValidUTF8(placed(piece))) << before << " " << after;
            for (const std::string_view piece : invalid)
                ASSERT_FALSE(isValidUTF8(placed(piece))) << before << " " << after;
        }
}

} // namespace kavendra
