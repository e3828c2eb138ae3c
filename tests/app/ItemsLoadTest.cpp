#include "app/ItemsLoad.h"

#include "search/SearchParts.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"
#include "tests/support/ResourceUse.h"
#include "tests/support/WorkbookWriter.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <functional>

namespace kavendra {

namespace {

using Lines = std::vector<std::string>;

const std::string header = "Title,Command,Params,Keywords\n";

constexpr std::size_t mebibyte = std::size_t{1} << 20;

std::string workbookRepeating(const std::string& title, std::size_t rows) {
    const std::string row = R"(<row><c r="A2" t="s"><v>0</v></c></row>)";
    const std::string strings = "<si><t>" + title + "</t></si>";
    return makeWorkbook(workbookParts({headerRow() + repeated(row, rows)}, strings));
}

ItemsLoad load(const std::string& directory) {
    return loadItems({.dataDirectory = directory, .includeBuiltinItems = false, .builtinFile = {}});
}

std::string failureOf(const ItemsLoad& load) {
    return load.items ? "none" : load.items.error().description;
}

Lines titles(const ItemsLoad& load) {
    if (!load.items)
        return {load.items.error().description};
    Lines found;
    const ItemList& items = load.items->list;
    for (const std::uint32_t index : load.items->index.matches(""))
        found.push_back(items[index].title + " of " + items[index].source);
    return found;
}

} // namespace

TEST(ItemsLoad, readsBuiltinItemsFirstThenFilesInOrder) {
    const TemporaryDirectory resources;
    const std::string directory = resources.path("made/by the load");
    const std::string builtin = resources.write("Built-in.csv", header + "built,,,\n");
    EXPECT_EQ(titles(load(directory)), Lines{});
    const auto write = [&](const std::string& name, const std::string& content) {
        resources.write("made/by the load/" + name, content);
    };
    const auto workbook = [](const char* title) {
        return makeWorkbook(workbookParts({headerRow() + inlineRow({title})}));
    };
    write("D.XLSM", workbook("5"));
    write("b.csv", header + "2,,,\n1,,,");
    write("A.csv", "\xEF\xBB\xBF" + header + "3,,,\n");
    write("A0.csv", header);
    write("c.xlsx", workbook("4"));
    const ItemsLoad all = loadItems({directory, true, builtin});
    Lines expected{"built of (Built-in)", "3 of A.csv",  "2 of b.csv",
                   "1 of b.csv",          "4 of c.xlsx", "5 of D.XLSM"};
    EXPECT_EQ(titles(all), expected);
    const std::string names = "): Title | Command | Params | Keywords";
    const Lines logLines{"CSV headers (Built-in.csv" + names,
                         "CSV headers (A.csv" + names,
                         "CSV headers (A0.csv" + names,
                         "CSV headers (b.csv" + names,
                         "Excel headers (c.xlsx / Sheet1" + names,
                         "Excel headers (D.XLSM / Sheet1" + names};
    EXPECT_EQ(all.logLines, logLines);
    expected.erase(expected.begin());
    const ItemsLoad again = load(directory);
    EXPECT_EQ(titles(again), expected);
    EXPECT_FALSE(all.items->list.indexOf(again.items->list.id(0))) << "every load gives new identities";
    EXPECT_EQ(titles(loadItems({directory, true, resources.path("none")})), expected);

    write("B.csv", "Title,Command\n");
    const ItemsLoad failed = loadItems({directory, true, builtin});
    EXPECT_EQ(failureOf(failed), "CSV is missing required columns: B.csv: Params");
    EXPECT_EQ(failed.logLines,
              (Lines{logLines[0], logLines[1], logLines[2], "CSV headers (B.csv): Title | Command"}));
}

TEST(ItemsLoad, showsTheFirstAvailableBuiltinItemOfEachTitle) {
    const TemporaryDirectory resources;
    const std::string builtin = resources.write(
        "Built-in.csv", header + "a,none,,\na,${word},x,y\na,other,,\nb,none,,\n\"c \"\"1\"\"\",same,,\n");
    const ItemsLoad load = loadItems({.dataDirectory = resources.path("data"),
                                      .includeBuiltinItems = true,
                                      .builtinFile = builtin,
                                      .builtinCommand = [](const std::string& command) {
                                          return command == "none"      ? std::nullopt
                                                 : command == "${word}" ? std::optional<std::string>("日本")
                                                                        : std::optional(command);
                                      }});
    ASSERT_EQ(titles(load), (Lines{"a of (Built-in)", "c \"1\" of (Built-in)"}));
    const LaunchItem item = load.items->list[0];
    EXPECT_EQ(item.command + "|" + item.params + "|" + item.keywords, "日本|x|y");
    EXPECT_EQ(load.items->list[1].command, "same");
    EXPECT_EQ(load.items->index.matches("日本").size(), 1U);
}

TEST(ItemsLoad, joinsFilesThatAreReadAtTheSameTimeInTheirOrder) {
    const TemporaryDirectory directory;
    const auto name = [](int number) { return std::to_string(1000 + number) + ".csv"; };
    Lines expected, logLines;
    for (int number = 0; number < 100; ++number) {
        // Every tenth file takes longer than all that follow it up to the next one.
        directory.write(name(number),
                        header + "title,,,\n" + repeated(",\n", number % 10 == 0 ? 200'000 : 1));
        expected.push_back("title of " + name(number));
        logLines.push_back("CSV headers (" + name(number) + "): Title | Command | Params | Keywords");
    }
    const ItemsLoad all = load(directory.path());
    EXPECT_EQ(titles(all), expected);
    EXPECT_EQ(all.logLines, logLines);

    directory.write(name(99), "");
    directory.write(name(53), "\"");
    directory.write(name(50), "Title\n" + repeated(",\n", 200'000));
    logLines.resize(51);
    logLines[50] = "CSV headers (1050.csv): Title";
    for (int round = 0; round < 5; ++round) {
        const ItemsLoad failed = load(directory.path());
        EXPECT_EQ(failureOf(failed), "CSV is missing required columns: 1050.csv: Command");
        EXPECT_EQ(failed.logLines, logLines);
    }
}

TEST(ItemsLoad, failsWithTheMessageOfTheFileThatCannotBeRead) {
    const TemporaryDirectory directory;
    const ScopedOrdinaryUser user(directory.path());
    directory.write("good.csv", header + "good,,,\n");
    const std::string csv = directory.path("x.csv"), excel = directory.path("x.xlsx");
    const std::string unreadable = "Invalid CSV format: x.csv: failed to read file";
    const std::string invalid = "Invalid Excel format: " + excel + ": ";
    const std::tuple<const char*, std::function<void()>, std::string> cases[] = {
        {"no known encoding", [&] { directory.write("x.csv", "\xFF\x80\xFF"); },
         "Invalid CSV format: x.csv: failed to decode text"},
        {"dangling link", [&] { std::filesystem::create_symlink("nowhere", csv); }, unreadable},
        {"directory", [&] { std::filesystem::create_directory(csv); }, unreadable},
        {"pipe", [&] { mkfifo(csv.c_str(), 0600); }, unreadable},
        {"not readable", [&] { chmod(directory.write("x.csv", header).c_str(), 0); }, unreadable},
        {"workbook directory", [&] { std::filesystem::create_directory(excel); }, invalid + "Is a directory"},
        {"workbook pipe", [&] { mkfifo(excel.c_str(), 0600); }, invalid + "Invalid argument"},
        {"workbook not readable", [&] { chmod(directory.write("x.xlsx", "").c_str(), 0); },
         invalid + "Permission denied"},
        {"none", [] {}, "none"},
    };
    for (const auto& [name, make, failure] : cases) {
        make();
        EXPECT_EQ(failureOf(load(directory.path())), failure) << name;
        std::filesystem::remove(csv);
        std::filesystem::remove(excel);
    }
    EXPECT_EQ(failureOf(load(directory.path("good.csv/x"))),
              directory.path("good.csv/x") + ": Not a directory");
}

TEST(ItemsLoad, chargesSharedLimitsInFileOrder) {
    std::string xml = headerRow() + inlineRow({"a"});
    xml.append(15 * mebibyte, '>');
    // The content of each of two files, and the failure.
    const std::tuple<const char*, std::string, std::string, std::string> cases[] = {
        {"rows of one letter", header + repeated("a\n", 700'000), "csv",
         "b.csv: too many rows or too much text in all files together"},
        {"more rows than a load may have", header + repeated("a,b,\n", 2'100'000), "csv",
         "b.csv: more than 4194304 rows in all files together"},
        {"XML that takes long to parse", makeWorkbook(workbookParts({xml})), "xlsx",
         "b.xlsx: too much XML in all files together"},
        {"half as many", header + repeated("a\n", 350'000), "csv", "none"},
    };
    for (const auto& [name, content, extension, failure] : cases) {
        SCOPED_TRACE(name);
        const TemporaryDirectory directory;
        directory.write("a." + extension, content);
        EXPECT_EQ(failureOf(load(directory.path())), "none");
        directory.write("b." + extension, content);
        EXPECT_THAT(failureOf(load(directory.path())), testing::EndsWith(failure));
    }
}

TEST(ItemsLoad, failsWithoutLeakingWhenMemoryIsShort) {
    const TemporaryDirectory directory;
    directory.write("a.csv", header + "good,,,\n");
    const std::string large = directory.write("large.csv", header);
    std::filesystem::resize_file(large, 256 * mebibyte);
    const ScopedMemoryLimit limit(128 * mebibyte);
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(failureOf(load(directory.path())), "not enough memory: large.csv");
    std::filesystem::resize_file(large, 40 * mebibyte);
    const ItemsLoad loaded = load(directory.path());
    ASSERT_TRUE(loaded.items);
    EXPECT_EQ(loaded.items->list.size(), 2U);
}

TEST(ItemsLoad, limitsTimeAndMemoryByTheSizeOfTheFile) {
    constexpr double maximumTimesHonest = 20;
    constexpr std::size_t memoryAlways = 64 * mebibyte, memoryTimesFile = 16;
    const std::string tooMuchText = "too much text for the size of the file";
    const std::string combiningMarks = "\u0301\u0327";
    const std::string growing = "\U0001D160"; // three times as long in normalisation form C
    const std::tuple<const char*, const char*, std::string, std::string> cases[] = {
        {"a long string in 20,000 rows", "a.xlsx",
         workbookRepeating("e" + repeated(combiningMarks, 500), 20'000), "none"},
        {"a longer string in 20,000 rows", "a.xlsx",
         workbookRepeating(repeated(combiningMarks, 1000), 20'000),
         "Invalid Excel format: a.xlsx: xl/worksheets/sheet1.xml: " + tooMuchText},
        {"a string that folding lengthens", "a.xlsx", workbookRepeating(repeated(growing, 300), 20'000),
         "Invalid Excel format: a.xlsx: " + tooMuchText},
        {"a million combining marks", "a.csv", header + ("e" + repeated(combiningMarks, 500'000)), "none"},
        {"a Shift JIS letter in each of 300,000 rows", "a.csv", header + (repeated("\xB1\n", 300'000)),
         "none"},
        {"rows of one Shift JIS letter", "a.csv", header + (repeated("\xB1\n", 1'300'000)),
         "Invalid CSV format: a.csv: more than 1273937 rows"},
        {"a letter in each of four columns", "a.csv", header + (repeated("Ά,Ё,Ж,Ω\n", 100'000)), "none"},
    };
    // Processor time is compared with that of an honest file, so that the limit holds on any machine.
    const TemporaryDirectory honest;
    honest.write("a.csv", header + repeated("Team wiki,https://wiki.example.com/,,docs\n", 200'000));
    const double honestSeconds =
        measureResources([&] { EXPECT_EQ(failureOf(load(honest.path())), "none"); }).seconds;
    for (const auto& [name, file, content, expected] : cases) {
        SCOPED_TRACE(name);
        const TemporaryDirectory directory;
        directory.write(file, content);
        std::string failure;
        const ResourceUse use = measureResources([&] { failure = failureOf(load(directory.path())); });
        EXPECT_EQ(failure, expected);
        EXPECT_LT(use.seconds / honestSeconds, maximumTimesHonest);
        EXPECT_LT(use.memory, memoryAlways + memoryTimesFile * content.size());
    }
}

TEST(ItemsLoad, namesTheLargestFileWhenMemoryForTheIndexIsShort) {
    ItemList items;
    for (const auto& [source, size] :
         {std::pair("a.csv", std::size_t{1}), {"large.csv", 100 * mebibyte}, {"z.csv", std::size_t{2}}}) {
        const TextSpan whole{.offset = 0, .length = static_cast<std::uint32_t>(size)};
        items.append({.text = ByteBuffer(std::string(size, 'a')),
                      .rows = {{whole}},
                      .source = source,
                      .fileSize = size});
    }
    EXPECT_TRUE(makeSearchParts(items));
    const ScopedMemoryLimit limit(50 * mebibyte);
    const auto parts = makeSearchParts(items);
    ASSERT_FALSE(parts);
    EXPECT_EQ(parts.error().description, "not enough memory: large.csv");
}

} // namespace kavendra
