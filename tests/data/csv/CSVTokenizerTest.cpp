#include "data/csv/CSVTokenizer.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavendra {

using namespace std::string_view_literals;

namespace {

using CSVRow = std::vector<std::string>;
using CSVRows = std::vector<CSVRow>;

/// Returns the rows that the tokenizer finds, nothing if a quote is open at the end.
std::optional<CSVRows> csvRows(std::string_view csv) {
    struct Collector {
        std::string text;
        CSVRows rows;
        CSVRow row;

        void field(CSVField field) {
            if (field.hasQuotes)
                unescapeCSVField(text.data(), field);
            row.emplace_back(text, field.begin, field.end - field.begin);
        }
        void endRow() { rows.push_back(std::exchange(row, {})); }
    } collector{.text = std::string(csv), .rows = {}, .row = {}};
    if (!tokenizeCSV(collector.text.data(), collector.text.size(), collector))
        return {};
    return std::move(collector.rows);
}

/// Adds a random row to `rows`, and to `text` one of its spellings: unquoted and quoted pieces in turns.
void addRow(CSVRows& rows, std::string& text, std::mt19937& random) {
    static const std::pair<const char*, const char*> quotedPieces[] = {
        {",", "\",\""}, {"\n", "\"\n\""}, {"\r\n", "\"\r\n\""}, {"\"", "\"\"\"\""}, {"あ\t", "\"あ\t\""}};
    CSVRow& row = rows.emplace_back();
    for (std::size_t fields = 1 + random() % 5; fields > 0; --fields) {
        const bool isAfterReturn = text.ends_with('\r'); // a line feed would not start a row
        bool isQuoted = !isAfterReturn && random() % 2 == 0;
        std::string& field = row.emplace_back();
        for (std::size_t pieces = isAfterReturn + random() % 5; pieces > 0; --pieces, isQuoted = !isQuoted) {
            const std::string run(1 + random() % 90, random() % 9 == 0 ? '\0' : 'x');
            const auto& [value, spelling] = quotedPieces[random() % std::size(quotedPieces)];
            field += isQuoted ? value : run;
            text += isQuoted ? spelling : run;
        }
        text += fields > 1 ? "," : std::array{"\n", "\r", "\r\n"}[random() % 3];
    }
}

} // namespace

TEST(CSVTokenizer, followsTheRulesOfQuoting) {
    const std::pair<std::string_view, CSVRows> cases[] = {
        {"", {}},
        {"\"\"", {}},
        {"\n", {{""}}},
        {"a,b\nc", {{"a", "b"}, {"c"}}},
        {"a,", {{"a", ""}}},
        {"a\r\nb\rc\n", {{"a"}, {"b"}, {"c"}}},
        {"a\r\n\nb\n\r\n", {{"a"}, {""}, {"b"}, {""}}},
        {"ab\"c,d\"e", {{"abc,de"}}},
        {"\"ab\"cd,x", {{"abcd", "x"}}},
        {"\"a \"\"quoted\"\" word\"", {{"a \"quoted\" word"}}},
        {"\"\"\"\"", {{"\""}}},
        {"\"a,b\r\nc\",d\r\ne", {{"a,b\r\nc", "d"}, {"e"}}},
        {"\"a\"\r\n\"b\"\r\"c\"\n", {{"a"}, {"b"}, {"c"}}},
        {" a , b ", {{" a ", " b "}}},
        {"a\0b,\0"sv, {{std::string("a\0b", 3), std::string(1, '\0')}}},
    };
    for (const auto& [text, rows] : cases)
        EXPECT_EQ(csvRows(text), rows) << text;
    for (const std::string_view open : {"\"", "x,\"y", "\"a\"\"", "a\n\"b\n"})
        EXPECT_EQ(csvRows(open), std::nullopt) << open;
}

TEST(CSVTokenizer, findsFieldsOfAnyLengthAndAlignment) {
    std::mt19937 random(7);
    for (unsigned round = 0; round < 5'000; ++round) {
        CSVRows rows;
        std::string text;
        while (rows.size() < round % 8)
            addRow(rows, text, random);
        SCOPED_TRACE(testing::PrintToString(text));
        ASSERT_EQ(csvRows(text), rows);
        ASSERT_EQ(csvRows(text + "\"a"), std::nullopt);
        for (std::size_t begin = 0; begin + 64 <= text.size(); begin += 64) {
            const CSVBlock fast = scanCSVBlock(&text[begin]), plain = scanCSVBlockPlain(&text[begin]);
            ASSERT_EQ(fast.quotes, plain.quotes);
            ASSERT_EQ(fast.separators, plain.separators);
        }
    }
}

} // namespace kavendra
