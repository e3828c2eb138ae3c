#include "data/LoadLimits.h"

#include "app/ItemsLoad.h"
#include "search/SearchIndex.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"
#include "tests/support/ResourceUse.h"
#include "tests/support/WorkbookWriter.h"

#include <gtest/gtest.h>

#ifdef __SANITIZE_ADDRESS__
/// Freed memory that the sanitizer holds back would count as used.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=1";
}
#endif

namespace kavendra {

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;

std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

std::string table(std::string_view rows) {
    return "Title,Command,Params,Keywords\n" + std::string(rows);
}

/// A workbook whose rows all have the same title.
std::string workbookRepeating(const std::string& title, std::size_t rows) {
    const std::string row = R"(<row><c r="A2" t="s"><v>0</v></c></row>)";
    const std::string strings = "<si><t>" + title + "</t></si>";
    return makeZip(zipEntries(workbookParts({headerRow() + repeated(row, rows)}, strings)));
}

} // namespace

TEST(LoadLimits, filesAreLoadedOrRefusedInProportionToTheirSize) {
    constexpr double secondsAlways = 1, secondsForMebibyte = 5.0 / 16;
    constexpr std::size_t memoryAlways = 64 * mebibyte, memoryTimesFile = 16;
    const std::string tooMuchText = "too much text for the size of the file";
    const std::string marks = "\u0301\u0327";
    const std::string growing = "\U0001D160"; // three times as long in normalisation form C
    struct Case {
        const char* name;
        const char* file;
        std::string content;
        std::string failure;
    };
    const Case cases[] = {
        {"a long string in 20,000 rows", "a.xlsx", workbookRepeating("e" + repeated(marks, 500), 20'000), ""},
        {"a longer string in 20,000 rows", "a.xlsx", workbookRepeating(repeated(marks, 1000), 20'000),
         "Invalid Excel format: a.xlsx: xl/worksheets/sheet1.xml: " + tooMuchText},
        {"a string that folding lengthens", "a.xlsx", workbookRepeating(repeated(growing, 300), 20'000),
         "Invalid Excel format: a.xlsx: " + tooMuchText},
        {"a million marks", "a.csv", table("e" + repeated(marks, 500'000)), ""},
        {"a Shift JIS letter in each of 300,000 rows", "a.csv", table(repeated("\xB1\n", 300'000)), ""},
        {"rows of one letter", "a.csv", table(repeated("a\n", 1'300'000)),
         "Invalid CSV format: a.csv: more than 1273937 rows"},
        {"a letter in each of four columns", "a.csv", table(repeated("Ά,Ё,Ж,Ω\n", 100'000)), ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryDirectory directory;
        directory.write(c.file, c.content);
        std::string failure;
        const ResourceUse use = measureResources([&] {
            const ItemsLoad load = loadItems({directory.path(), false, ""});
            failure = load.items ? "" : load.items.error().description;
        });
        EXPECT_EQ(failure, c.failure);
        const auto size = static_cast<double>(c.content.size()) / mebibyte;
        EXPECT_LT(use.seconds, secondsAlways + secondsForMebibyte * size);
        EXPECT_LT(use.memory, memoryAlways + memoryTimesFile * c.content.size());
        testing::Test::RecordProperty(c.name, std::to_string(use.seconds) + " s, " +
                                                  std::to_string(use.memory / mebibyte) + " MiB");
    }
}

TEST(LoadLimits, shortMemoryNamesTheLargestFile) {
    ItemList items;
    for (const auto& [source, size] :
         {std::pair("a.csv", std::size_t{1}), {"large.csv", 100 * mebibyte}, {"z.csv", std::size_t{2}}}) {
        ItemBlock block{.text = ByteBuffer(size),
                        .rows = {{TextSpan{.offset = 0, .length = static_cast<std::uint32_t>(size)}}},
                        .source = source,
                        .fileSize = size};
        block.text.setSize(size);
        std::memset(block.text.data(), 'a', size);
        items.append(std::move(block));
    }
    EXPECT_TRUE(makeSearchText(items));
    const ScopedMemoryLimit limit(50 * mebibyte);
    const auto text = makeSearchText(items);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error().description, "not enough memory: large.csv");
}

} // namespace kavendra
