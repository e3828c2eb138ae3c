#include "data/DataDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kavendra {

namespace {

using Lines = std::vector<std::string>;

/// The four texts of each item with a bar between them, or the failure alone. The files are made by
/// tests/fixtures/make-workbooks.py.
Lines itemsOf(const std::string& fixture) {
    const auto block = loadDataFile(KAVENDRA_FIXTURES "/" + fixture, fixture, [](auto) {});
    if (!block)
        return {block.error().description};
    EXPECT_EQ(block->source, fixture);
    Lines items;
    for (const ItemRow& row : block->rows) {
        std::string item;
        for (std::size_t column = 0; column < row.size(); ++column)
            item.append(column > 0 ? "|" : "").append(block->value(row, column));
        items.push_back(item);
    }
    return items;
}

Lines usualItems(const std::string& lastItem) {
    return {"Wiki|https://example.org/wiki?a=1&b=2||team <docs>",
            "Editor|/usr/bin/editor|--title \"two words\"|text\nedit",
            "会議資料 Meeting ノート|/srv/共有/会議 2024.ods||かいぎ meeting", "Emoji 🚀 and é|program|1|2.5",
            lastItem};
}

} // namespace

TEST(WorkbookFixtures, areReadWhateverProgramWroteThem) {
    Lines withReading = usualItems("42|Title||");
    withReading[2].replace(0, withReading[2].find('|'), "会議資料 Meeting ノートカイギシリョウ");
    Lines twenty;
    for (int number = 1; number <= 20; ++number)
        if (number % 6 != 0) // the sixth row is beyond where the header is looked for
            twenty.push_back("item " + std::to_string(number) + "|program||shared keyword");

    struct Case {
        const char* fixture;
        Lines items;
    };
    const Case cases[] = {
        {"libreoffice.xlsx", usualItems("42|Title||")},
        {"open.xlsx", usualItems("42|Title||")},
        {"macros.xlsm", usualItems("42|Title||")},
        {"zip64.xlsx", usualItems("42|Title||")},
        {"readings.xlsx", withReading},
        {"openpyxl.xlsx", usualItems("42|1||0.5")},
        {"stored.xlsx", usualItems("42|1||0.5")},
        {"gnumeric.xlsx", {"Wiki|https://example.org/wiki?a=1&b=2||team <docs>", "会議資料|||"}},
        {"rich-text.xlsx", {"one bold and red|tool|--n 1|45351", "after empty rows|a link||"}},
        {"charts-and-hidden-sheets.xlsx", {"from the hidden sheet|a||", "from the very hidden sheet|b||"}},
        {"twenty-sheets.xlsx", twenty},
        {"~$open.xlsx", {"Invalid Excel format: ~$open.xlsx: Not a zip archive"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(itemsOf(c.fixture), c.items) << c.fixture;
}

} // namespace kavendra
