#include "data/workbook/WorkbookReader.h"
#include "tests/data/Reading.h"

namespace kavendra {

namespace {

Lines usualItems(const std::string& lastItem) {
    return {"Wiki|https://example.org/wiki?a=1&b=2||team <docs>",
            "Editor|/usr/bin/editor|--title \"two words\"|text\nedit",
            "会議資料 Meeting ノート|/srv/共有/会議 2024.ods||かいぎ meeting", "Emoji 🚀 and é|program|1|2.5",
            lastItem};
}

} // namespace

TEST(WorkbookFixtures, areReadFromAllPrograms) {
    Lines withReading = usualItems("42|Title||");
    withReading[2].replace(0, withReading[2].find('|'), "会議資料 Meeting ノートカイギシリョウ");
    Lines twenty;
    for (int number = 1; number <= 20; ++number)
        if (number % 6 != 0) // the sixth row is beyond where the header is looked for
            twenty.push_back("item " + std::to_string(number) + "|program||shared keyword");

    const Lines gnumeric{"Wiki|https://example.org/wiki?a=1&b=2||team <docs>", "会議資料|||"};

    // The files are made by tools/make-test-workbooks.
    const std::pair<std::string, Lines> cases[] = {
        {"libreoffice.xlsx", usualItems("42|Title||")},
        {"open.xlsx", usualItems("42|Title||")},
        {"macros.xlsm", usualItems("42|Title||")},
        {"zip64.xlsx", usualItems("42|Title||")},
        {"readings.xlsx", withReading},
        {"openpyxl.xlsx", usualItems("42|1||0.5")},
        {"stored.xlsx", usualItems("42|1||0.5")},
        {"gnumeric.xlsx", gnumeric},
        {"rich-text.xlsx", {"one bold and red|tool|--n 1|45351", "after empty rows|a link||"}},
        {"charts-and-hidden-sheets.xlsx", {"from the hidden sheet|a||", "from the very hidden sheet|b||"}},
        {"twenty-sheets.xlsx", twenty},
        {"zip-pipe.xlsx", gnumeric},
        {"zip-descriptors.xlsx", gnumeric},
        {"zip-zip64.xlsx", gnumeric},
        {"bsdtar.xlsx", gnumeric},
        {"cmake.xlsx", gnumeric},
        {"differing-headers.xlsx", gnumeric},
        {"bytes-behind-the-end.xlsx", gnumeric},
        {"~$open.xlsx", {}},
    };
    for (const auto& [fixture, items] : cases) {
        SCOPED_TRACE(fixture);
        const Reading reading =
            comparable(readWorkbookItems(dataFileAt(KAVENDRA_FIXTURES "/" + fixture), "source"));
        EXPECT_EQ(reading.items, items);
        EXPECT_EQ(reading.failure.empty(), !items.empty()) << reading.failure;
    }
}

} // namespace kavendra
