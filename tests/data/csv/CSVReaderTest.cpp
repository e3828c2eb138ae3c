#include "data/csv/CSVReader.h"

#include "tests/data/Reading.h"

#include <cstring>
#include <utility>

namespace kavendra {

namespace {

const std::string header = "Title,Command,Params,Keywords\n";
const std::string headerLine = "CSV headers (tools.csv): ";
const std::string openQuote = "CSV unterminated quote (tools.csv): opened in row ";
const std::string unterminated = "Invalid CSV format: unterminated quote";

Reading read(std::string_view text) {
    return comparable(readCSVItems(ByteBuffer(text), "tools.csv", "source"));
}

} // namespace

TEST(ReadCSVItems, mapsRowsByTheHeaderNames) {
    const std::tuple<const char*, std::string, Lines> cases[] = {
        {"header alone", "Title,Command,Params,Keywords", {}},
        {"columns in another order, one more", "Keywords,Title,Extra,Command,Params\nk,t,e,c,p", {"t|c|p|k"}},
        {"header with spaces", " Title ,Command\t,\"Params\",\u3000Keywords\na,b,c,d", {"a|b|c|d"}},
        {"a column called Source is ignored", "Source," + header + "s,a,b,c,d", {"a|b|c|d"}},
        {"the first of equal names", "Title,Command,Params,Keywords,Title,,\na,b,c,d,e,f,g", {"a|b|c|d"}},
        {"blank rows are skipped", header + ",,,\n   \n\n\"\",\" \",\u3000\na", {"a|||"}},
        {"a short row and a long one", header + "a\na,b,c,d,e,f", {"a|||", "a|b|c|d"}},
        {"text in an extra column only", header + ",,,,x\n", {"|||"}},
        {"fields are trimmed, inside quotes too",
         header + "  open  ,\" a b \",\u00A0c\u3000,\t\"\"\"d\"\" \"",
         {"open|a b|c|\"d\""}},
        {"several lines in a field", header + "\"a\r\nb, c\",d", {"a\r\nb, c|d||"}},
        {"NUL is a character", header + std::string("\0a\0,\0", 5), {std::string("\0a\0|\0||", 7)}},
    };
    for (const auto& [name, text, items] : cases) {
        const Reading reading = read(text);
        EXPECT_EQ(reading.items, items) << name;
        EXPECT_EQ(reading.failure, "") << name;
    }
}

TEST(ReadCSVItems, logsTheHeaderOrTheRowOfAnOpenQuote) {
    const std::string missing = "CSV is missing required columns: tools.csv: ";
    const std::tuple<std::string, Lines, std::string> cases[] = {
        {"", {}, ""},
        {"\"\"", {}, ""},
        {" Title,\"Com\"\"mand\",,Params ,Keywords,Command\nx",
         {headerLine + "Title | Com\"mand |  | Params | Keywords | Command"},
         ""},
        {"title,Command,Params,Keywords",
         {headerLine + "title | Command | Params | Keywords"},
         missing + "Title"},
        {"Title,Command", {headerLine + "Title | Command"}, missing + "Params"},
        {"Keywords,Params,Title", {headerLine + "Keywords | Params | Title"}, missing + "Command"},
        {"Title,Params,Command\nx", {headerLine + "Title | Params | Command"}, missing + "Keywords"},
        {"\n" + header, {headerLine}, missing + "Title"},
        {"Title,\"", {openQuote + "1"}, unterminated},
        {header + "\n\"a\nb\",\"\"\"\"\r\nx,\"y\"\"z\nlast\n", {openQuote + "4"}, unterminated},
    };
    for (const auto& [text, log, failure] : cases) {
        const Reading reading = read(text);
        EXPECT_EQ(reading.log, log) << text;
        EXPECT_EQ(reading.failure, failure) << text;
    }
}

TEST(ReadCSVItems, readsAMillionFieldsAndRejectsALargeOpenQuote) {
    std::string wide(header, 0, header.size() - 1);
    for (int i = 0; i < 250'000; ++i)
        wide += ",Title,Keywords,,x";
    const std::string row = "a,b,c,d" + std::string(1'000'000, ',');
    const Reading reading = read(wide + "\n" + row + "\n" + row);
    EXPECT_EQ(reading.items, (Lines{"a|b|c|d", "a|b|c|d"}));
    EXPECT_LT(reading.log.at(0).size(), 66'000U);
    EXPECT_TRUE(reading.log.at(0).ends_with("…"));

    ByteBuffer quote(200'000'000);
    quote.setSize(quote.capacity());
    std::memset(quote.data(), 'x', quote.size());
    quote.data()[0] = '"';
    const auto block = readCSVItems(std::move(quote), "tools.csv", "source").items;
    EXPECT_EQ(block.error().description, unterminated);
}

} // namespace kavendra
