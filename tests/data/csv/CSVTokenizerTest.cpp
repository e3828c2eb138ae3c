#include "data/csv/CSVTokenizer.h"

#include "base/Text.h"
#include "data/csv/CSVReader.h"
#include "tests/data/Reading.h"

#include <algorithm>
#include <optional>
#include <random>
#include <utility>

namespace kavendra {

using namespace std::string_view_literals;

namespace {

using CSVRows = std::vector<Lines>;

/// Returns the rows that the tokenizer finds, nothing if a quote is open at the end.
std::optional<CSVRows> csvRows(std::string_view csv) {
    struct Collector {
        std::string text;
        CSVRows rows;
        Lines row;

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

/// The rules of quoting as a plain state machine, one character at a time: what the reader's scan in blocks
/// is held to. Returns nothing when a quote is open at the end.
std::optional<CSVRows> plainCSVRows(std::string_view text) {
    CSVRows rows;
    Lines row;
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

/// The items that the plain rows give, as itemTexts has them.
Lines plainItems(const CSVRows& rows) {
    Lines items;
    Lines header;
    for (const std::string& name : rows.front())
        header.emplace_back(trimmed(name));
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
        if (std::ranges::all_of(*row, [](const std::string& field) { return trimmed(field).empty(); }))
            continue;
        std::string& item = items.emplace_back();
        for (const std::string_view name : requiredColumns) {
            const auto column = static_cast<std::size_t>(std::ranges::find(header, name) - header.begin());
            item.append(name == "Title" ? "" : "|");
            item.append(column < row->size() ? trimmed((*row)[column]) : "");
        }
    }
    return items;
}

/// Texts in which the special characters are dense, or sparse enough that fields reach over blocks.
class TextGenerator {
public:
    std::string text() {
        const std::size_t pieces = random() % 200, runLength = 1 + random() % 90;
        const bool fewQuotes = random() % 2 == 0;
        const auto quote = [&] { return fewQuotes && random() % 8 != 0 ? "q" : "\""; };
        std::string result;
        for (std::size_t i = 0; i < pieces; ++i) {
            const char* const marks[] = {quote(), quote(), ",", ",",      "\n",
                                         "\r",    "\r\n",  " ", "\u3000", "あ\t"};
            if (const std::size_t choice = random() % 12; choice < std::size(marks))
                result += marks[choice];
            else
                result += std::string(random() % runLength, random() % 9 == 0 ? '\0' : 'x');
        }
        return result;
    }

private:
    std::mt19937 random{7};
};

} // namespace

TEST(CSVTokenizer, FollowsTheRulesOfQuoting) {
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

TEST(CSVTokenizer, AgreesWithThePlainStateMachine) {
    TextGenerator generator;
    const std::string headers[] = {"Title,Command,Params,Keywords\n",
                                   "x,\"Keywords\" ,Title,,Params,Title,Command\n"};
    int complete = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = headers[round % 2] + generator.text();
        SCOPED_TRACE(testing::PrintToString(text));
        const std::optional<CSVRows> expected = plainCSVRows(text);
        ASSERT_EQ(csvRows(text), expected);
        const Result<ItemBlock> block = readCSVItems(ByteBuffer(text), "f", "f").items;
        ASSERT_EQ(block ? std::optional(itemTexts(*block)) : std::nullopt, expected.transform(plainItems));
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
