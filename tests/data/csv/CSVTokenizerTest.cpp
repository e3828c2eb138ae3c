#include "data/csv/CSVTokenizer.h"

#include <gtest/gtest.h>

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

/// A plain state machine with the same rules, one character at a time. Returns nothing if a quote is open at
/// the end.
std::optional<CSVRows> plainCSVRows(std::string_view text) {
    CSVRows rows;
    CSVRow row;
    std::string field;
    bool inQuotes = false;
    const auto endField = [&] { row.push_back(std::exchange(field, {})); };
    const auto endRow = [&] {
        endField();
        rows.push_back(std::exchange(row, {}));
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (inQuotes && c == '"' && next == '"') {
            field += '"';
            ++i;
        } else if (c == '"') {
            inQuotes = !inQuotes;
        } else if (inQuotes) {
            field += c;
        } else if (c == ',') {
            endField();
        } else if (c == '\n' || c == '\r') {
            endRow();
            if (c == '\r' && next == '\n')
                ++i;
        } else {
            field += c;
        }
    }
    if (inQuotes)
        return {};
    if (!field.empty() || !row.empty())
        endRow();
    return rows;
}

/// Generates texts whose special characters are dense, or so sparse that fields span blocks.
class TextGenerator {
public:
    std::string text() {
        const std::size_t pieces = random() % 200, runLength = 1 + random() % 90;
        const bool fewQuotes = random() % 2 == 0;
        const auto quote = [&] { return fewQuotes && random() % 8 != 0 ? "q" : "\""; };
        std::string result;
        for (std::size_t i = 0; i < pieces; ++i) {
            const char* const specials[] = {quote(), quote(), ",", ",",      "\n",
                                            "\r",    "\r\n",  " ", "\u3000", "あ\t"};
            if (const std::size_t choice = random() % 12; choice < std::size(specials))
                result += specials[choice];
            else
                result += std::string(random() % runLength, random() % 9 == 0 ? '\0' : 'x');
        }
        return result;
    }

private:
    std::mt19937 random{7};
};

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

TEST(CSVTokenizer, agreesWithThePlainStateMachine) {
    TextGenerator generator;
    int complete = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = generator.text();
        SCOPED_TRACE(testing::PrintToString(text));
        const std::optional<CSVRows> expected = plainCSVRows(text);
        ASSERT_EQ(csvRows(text), expected);
        complete += expected.has_value();
        for (std::size_t begin = 0; begin + 64 <= text.size(); begin += 64) {
            const CSVBlock fast = scanCSVBlock(&text[begin]), plain = scanCSVBlockPlain(&text[begin]);
            ASSERT_EQ(fast.quotes, plain.quotes);
            ASSERT_EQ(fast.separators, plain.separators);
        }
    }
    EXPECT_GT(complete, 5'000);
}

} // namespace kavendra
