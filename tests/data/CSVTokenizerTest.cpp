#include "data/CSVTokenizer.h"

#include "data/CSVReader.h"
#include "platform/Text.h"
#include "tests/data/PlainCSV.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>

namespace kavendra {

namespace {

struct Collector {
    std::string text;
    CSVRows rows = {};
    std::vector<std::string> row = {};

    void field(CSVField field) {
        if (field.hasQuotes)
            unescapeCSVField(text.data(), field);
        row.emplace_back(text, field.begin, field.end - field.begin);
    }
    void endRow() { rows.push_back(std::exchange(row, {})); }
};

template <auto scanBlock>
std::optional<CSVRows> rowsBy(const std::string& text) {
    Collector collector{.text = text};
    if (!tokenizeCSV<scanBlock>(collector.text.data(), collector.text.size(), collector))
        return {};
    return collector.rows;
}

/// Texts in which the special characters are dense, or sparse enough that fields reach over blocks.
class TextGenerator {
public:
    std::string text() {
        const std::size_t pieces = random() % 200, runLength = 1 + random() % 90;
        const bool fewQuotes = random() % 2 == 0;
        std::string result;
        for (std::size_t i = 0; i < pieces; ++i) {
            switch (random() % 10) {
            case 0:
            case 1:
                result += fewQuotes && random() % 8 != 0 ? "q" : "\"";
                break;
            case 2:
            case 3:
                result += ',';
                break;
            case 4:
                result += '\n';
                break;
            case 5:
                result += random() % 2 == 0 ? "\r" : "\r\n";
                break;
            case 6:
                result += random() % 2 == 0 ? " " : "\u3000";
                break;
            case 7:
                result += "あ\t";
                break;
            default:
                result += std::string(random() % runLength, random() % 9 == 0 ? '\0' : 'x');
            }
        }
        return result;
    }

private:
    std::mt19937 random{7};
};

/// The items that the plain rows give, each as its texts in the order of the required columns.
CSVRows plainItems(const CSVRows& rows) {
    CSVRows items;
    std::map<std::string, std::size_t> columns;
    for (std::size_t i = 0; i < rows.front().size(); ++i)
        columns.try_emplace(std::string(trimmed(rows.front()[i])), i);
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
        if (std::ranges::all_of(*row, [](const std::string& field) { return trimmed(field).empty(); }))
            continue;
        std::vector<std::string> item;
        for (const std::string_view name : requiredColumns) {
            const std::size_t column = columns.at(std::string(name));
            item.emplace_back(column < row->size() ? trimmed((*row)[column]) : "");
        }
        items.push_back(item);
    }
    return items;
}

CSVRows textsOf(const ItemBlock& block) {
    CSVRows items;
    for (const ItemRow& row : block.rows) {
        std::vector<std::string> item;
        for (std::size_t column = 0; column < row.size(); ++column)
            item.emplace_back(block.value(row, column));
        items.push_back(item);
    }
    return items;
}

} // namespace

TEST(CSVTokenizer, AgreesWithThePlainStateMachine) {
    TextGenerator generator;
    int complete = 0;
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = generator.text();
        const std::optional<CSVRows> expected = plainCSVRows(text);
        complete += expected.has_value();
        ASSERT_EQ(rowsBy<scanCSVBlock>(text), expected) << testing::PrintToString(text);
        ASSERT_EQ(rowsBy<scanCSVBlockPlain>(text), expected) << testing::PrintToString(text);
    }
    EXPECT_GT(complete, 5'000);
}

TEST(CSVReader, AgreesWithThePlainMappingOfRows) {
    TextGenerator generator;
    const std::string headers[] = {"Title,Command,Params,Keywords",
                                   "x,\"Keywords\" ,Title,,Params,Title,Command"};
    for (int round = 0; round < 10'000; ++round) {
        const std::string text = headers[round % 2] + "\n" + generator.text();
        const std::optional<CSVRows> rows = plainCSVRows(text);
        const Result<ItemBlock> block = readCSVItems(ByteBuffer(text), "f", "f", [](auto) {});
        ASSERT_EQ(block.has_value(), rows.has_value());
        if (rows) {
            ASSERT_EQ(textsOf(*block), plainItems(*rows)) << testing::PrintToString(text);
        }
    }
}

} // namespace kavendra
