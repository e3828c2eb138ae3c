#include "data/CSVReader.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace kavendra {

using namespace std::string_view_literals;

namespace {

struct Reading {
    std::vector<std::string> items; ///< the four texts of each, with a bar between them
    std::vector<std::string> log;
    std::string failure;
};

Reading read(std::string_view text) {
    Reading reading;
    Result<ItemBlock> block = readCSVItems(ByteBuffer(text), "tools.csv", "source",
                                           [&](std::string_view line) { reading.log.emplace_back(line); });
    if (!block) {
        reading.failure = block.error().description;
        return reading;
    }
    EXPECT_EQ(block->source, "source");
    for (const ItemRow& row : block->rows) {
        std::string item;
        for (std::size_t column = 0; column < row.size(); ++column)
            item.append(column > 0 ? "|" : "").append(block->value(row, column));
        reading.items.push_back(item);
    }
    return reading;
}

constexpr std::string_view header = "Title,Command,Params,Keywords\n";

} // namespace

TEST(ParseCSVRows, FollowsTheRulesOfQuoting) {
    using Rows = std::vector<std::vector<std::string>>;
    struct Case {
        std::string_view text;
        Rows rows;
    };
    const Case cases[] = {
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
    for (const Case& each : cases)
        EXPECT_EQ(parseCSVRows(each.text), each.rows) << each.text;
    for (const std::string_view open : {"\"", "x,\"y", "\"a\"\"", "a\n\"b\n"})
        EXPECT_EQ(parseCSVRows(open).error().description, "Invalid CSV format: unterminated quote") << open;
}

TEST(ReadCSVItems, MapsRowsByTheHeaderNames) {
    struct Case {
        const char* name;
        std::string text;
        std::vector<std::string> items;
    };
    const std::string head(header);
    const Case cases[] = {
        {"header alone", "Title,Command,Params,Keywords", {}},
        {"columns in another order, one more", "Keywords,Title,Extra,Command,Params\nk,t,e,c,p", {"t|c|p|k"}},
        {"header with spaces", " Title ,Command\t,\"Params\",\u3000Keywords\na,b,c,d", {"a|b|c|d"}},
        {"a column called Source is ignored", "Source,Title,Command,Params,Keywords\ns,a,b,c,d", {"a|b|c|d"}},
        {"of equal names the first counts",
         "Title,Command,Params,Keywords,Title,,\na,b,c,d,e,f,g",
         {"a|b|c|d"}},
        {"blank rows are skipped", head + ",,,\n   \n\n\"\",\" \",\u3000\na", {"a|||"}},
        {"a short row and a long one", head + "a\na,b,c,d,e,f", {"a|||", "a|b|c|d"}},
        {"text in an extra column only", head + ",,,,x\n", {"|||"}},
        {"fields are trimmed, inside quotes too",
         head + "  open  ,\" a b \",\u00A0c\u3000,\t\"\"\"d\"\" \"",
         {"open|a b|c|\"d\""}},
        {"several lines in a field", head + "\"a\r\nb, c\",d", {"a\r\nb, c|d||"}},
        {"NUL is a character", head + std::string("\0a\0,\0", 5), {std::string("\0a\0|\0||", 7)}},
    };
    for (const Case& each : cases) {
        const Reading reading = read(each.text);
        EXPECT_EQ(reading.items, each.items) << each.name;
        EXPECT_EQ(reading.failure, "") << each.name;
    }
}

TEST(ReadCSVItems, LogsTheHeaderOfEveryTextThatCanBeSplit) {
    EXPECT_EQ(read(" Title,\"Com\"\"mand\",,Params ,Keywords,Command\nx").log,
              std::vector<std::string>{
                  "CSV headers (tools.csv): Title | Com\"mand |  | Params | Keywords | Command"});
    EXPECT_EQ(read("Title\nx").log, std::vector<std::string>{"CSV headers (tools.csv): Title"});
    EXPECT_TRUE(read("").log.empty());
    EXPECT_TRUE(read("Title,Command,Params,Keywords\n\"").log.empty());
}

TEST(ReadCSVItems, NamesTheFailure) {
    struct Case {
        std::string_view text;
        std::string failure;
    };
    const std::string missing = "CSV is missing required columns: tools.csv: ";
    const Case cases[] = {
        {"", ""},
        {"\"\"", ""},
        {"title,Command,Params,Keywords", missing + "Title"},
        {"Title,Command", missing + "Params"},
        {"Keywords,Params,Title", missing + "Command"},
        {"\nTitle,Command,Params,Keywords\n", missing + "Title"},
        {"Title,Command,Params,Keywords\nx,\"y", "Invalid CSV format: unterminated quote"},
        {"Title\n\"", "Invalid CSV format: unterminated quote"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(read(each.text).failure, each.failure) << each.text;
}

TEST(ReadCSVItems, TakesRowsOfAMillionFieldsAndAFileOfOneQuote) {
    std::string wide(header.substr(0, header.size() - 1));
    for (int i = 0; i < 250'000; ++i)
        wide += ",Title,Keywords,,x";
    const std::string row = "a,b,c,d" + std::string(1'000'000, ',');
    EXPECT_EQ(read(wide + "\n" + row + "\n" + row).items, (std::vector<std::string>{"a|b|c|d", "a|b|c|d"}));

    ByteBuffer quote(200'000'000);
    quote.setSize(quote.capacity());
    std::memset(quote.data(), 'x', quote.size());
    quote.data()[0] = '"';
    const auto block = readCSVItems(std::move(quote), "tools.csv", "source", [](auto) {});
    EXPECT_EQ(block.error().description, "Invalid CSV format: unterminated quote");
}

TEST(ReadCSVItems, RefusesMoreRowsThanMemoryIsSpentOn) {
    constexpr std::size_t limit = 16'777'216;
    std::string text(header);
    for (std::size_t row = 0; row <= limit; ++row)
        text += "a\n";
    EXPECT_EQ(read(text).failure, "Invalid CSV format: tools.csv: more than 16777216 rows");
}

} // namespace kavendra
