#include "app/DataDirectory.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"
#include "tests/support/WorkbookWriter.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

namespace {

const std::string header = "Title,Command,Params,Keywords\n";

void ignoreLine(std::string_view) {}

std::vector<std::string> titles(const ItemList& items) {
    std::vector<std::string> found;
    for (std::size_t index = 0; index < items.size(); ++index)
        found.push_back(items[index].title + " of " + items[index].source);
    return found;
}

} // namespace

TEST(DataDirectory, picksAndOrdersTheDataFiles) {
    const TemporaryDirectory directory;
    for (const char* name : {"_old.csv", "Notes.CSV", ".hidden.csv", "old.xls", "list.txt", "b.csv", "A.xlsx",
                             "csv", "c.XLSM", "~$book.xlsx", ".csv"})
        directory.write(name, "");
    std::filesystem::create_directories(directory.path("folder/sub.csv"));
    std::filesystem::create_directories(directory.path("directory.csv"));
    const auto files = listDataFiles(directory.path());
    ASSERT_TRUE(files);
    std::vector<std::string> names;
    for (const std::string& file : *files)
        names.push_back(file.substr(directory.path().size() + 1));
    EXPECT_EQ(names, (std::vector<std::string>{".hidden.csv", "~$book.xlsx", "A.xlsx", "b.csv", "c.XLSM",
                                               "directory.csv", "Notes.CSV"}));
}

TEST(DataDirectory, loadsBuiltinItemsFirstAndFilesInOrder) {
    const TemporaryDirectory directory, resources;
    const auto workbook = [](const char* title) {
        return makeZip(zipEntries(workbookParts({headerRow() + inlineRow({title})})));
    };
    const std::string builtin = resources.write("Built-in.csv", header + "built,,,\n");
    directory.write("D.XLSM", workbook("5"));
    directory.write("b.csv", header + "2,,,\n1,,,");
    directory.write("A.csv", "\xEF\xBB\xBF" + header + "3,,,\n");
    directory.write("c.xlsx", workbook("4"));
    const auto items = loadAllItems(directory.path(), true, builtin, ignoreLine);
    ASSERT_TRUE(items) << items.error().description;
    std::vector<std::string> expected{"built of (Built-in)", "3 of A.csv",  "2 of b.csv",
                                      "1 of b.csv",          "4 of c.xlsx", "5 of D.XLSM"};
    EXPECT_EQ(titles(*items), expected);
    const auto again = loadAllItems(directory.path(), false, builtin, ignoreLine);
    expected.erase(expected.begin());
    EXPECT_EQ(titles(*again), expected);
    EXPECT_FALSE(items->indexOf(again->id(0))) << "every load gives new identities";
    EXPECT_EQ(titles(*loadAllItems(directory.path(), true, resources.path("none"), ignoreLine)), expected);
}

TEST(DataDirectory, oneBadFileFailsTheWholeLoadWithItsMessage) {
    const TemporaryDirectory directory;
    const ScopedOrdinaryUser user(directory.path());
    directory.write("good.csv", header + "good,,,\n");
    const std::string csv = directory.path("x.csv"), excel = directory.path("x.xlsx");
    const auto failure = [&] {
        const auto items = loadAllItems(directory.path(), false, "", ignoreLine);
        std::filesystem::remove(csv);
        std::filesystem::remove(excel);
        return items ? "no failure" : items.error().description;
    };
    directory.write("x.csv", "Title,Command\n");
    EXPECT_EQ(failure(), "CSV is missing required columns: x.csv: Params");
    directory.write("x.csv", "\xFF\x80\xFF");
    EXPECT_EQ(failure(), "Invalid CSV format: x.csv: failed to decode text");

    const std::string unreadable = "Invalid CSV format: x.csv: failed to read file";
    std::filesystem::create_symlink("nowhere", csv);
    EXPECT_EQ(failure(), unreadable);
    std::filesystem::create_directory(csv);
    EXPECT_EQ(failure(), unreadable);
    ASSERT_EQ(mkfifo(csv.c_str(), 0600), 0);
    EXPECT_EQ(failure(), unreadable);
    chmod(directory.write("x.csv", header).c_str(), 0);
    EXPECT_EQ(failure(), unreadable);

    std::filesystem::create_directory(excel);
    EXPECT_EQ(failure(), "Invalid Excel format: " + excel + ": Is a directory");
    ASSERT_EQ(mkfifo(excel.c_str(), 0600), 0);
    EXPECT_EQ(failure(), "Invalid Excel format: " + excel + ": Invalid argument");
    chmod(directory.write("x.xlsx", "").c_str(), 0);
    EXPECT_EQ(failure(), "Invalid Excel format: " + excel + ": Permission denied");
}

TEST(DataDirectory, chargesAllFilesTogetherInTheirOrder) {
    const auto table = [](const char* row, std::size_t rows) {
        std::string text = header;
        for (std::size_t count = 0; count < rows; ++count)
            text += row;
        return text;
    };
    std::string xml = headerRow() + inlineRow({"a"});
    xml.append(15U << 20, '>');
    struct Case {
        const char* name;
        std::string content; ///< of each of two files
        std::string extension;
        const char* failure;
    };
    const Case cases[] = {
        {"rows of one letter", table("a\n", 700'000), "csv",
         "too many rows or too much text in all files together"},
        {"more rows than a load may have", table("a,b,\n", 2'100'000), "csv",
         "more than 4194304 rows in all files together"},
        {"XML that takes long to parse", makeZip(zipEntries(workbookParts({xml}))), "xlsx",
         "too much XML in all files together"},
        {"half as many", table("a\n", 350'000), "csv", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TemporaryDirectory directory;
        directory.write("a." + c.extension, c.content);
        EXPECT_TRUE(loadAllItems(directory.path(), false, "", ignoreLine));
        directory.write("b." + c.extension, c.content);
        const auto items = loadAllItems(directory.path(), false, "", ignoreLine);
        const std::string expected = c.failure ? "b." + c.extension + ": " + c.failure : "none";
        const std::string failure = items ? "none" : items.error().description;
        EXPECT_TRUE(failure.ends_with(expected)) << failure;
    }
}

TEST(DataDirectory, shortMemoryFailsTheLoadAndFreesIt) {
    const TemporaryDirectory directory;
    directory.write("a.csv", header + "good,,,\n");
    const std::string large = directory.write("large.csv", header);
    std::filesystem::resize_file(large, std::size_t{256} << 20);
    const ScopedMemoryLimit limit(std::size_t{128} << 20);
    for (int load = 0; load < 3; ++load) {
        const auto items = loadAllItems(directory.path(), false, "", ignoreLine);
        ASSERT_FALSE(items);
        EXPECT_EQ(items.error().description, "not enough memory: large.csv");
    }
    std::filesystem::resize_file(large, std::size_t{64} << 20);
    EXPECT_EQ(loadAllItems(directory.path(), false, "", ignoreLine)->size(), 2U);
}

TEST(DataDirectory, isCreatedWhenMissingAndRefusedWhenItIsNone) {
    const TemporaryDirectory directory;
    const std::string missing = directory.path("a/b");
    ASSERT_TRUE(ensureDataDirectory(missing));
    EXPECT_TRUE(loadAllItems(missing, false, "", ignoreLine)->empty());
    const std::string file = directory.write("file", "");
    EXPECT_TRUE(ensureDataDirectory(file)) << "whatever stands there is left alone";
    EXPECT_EQ(listDataFiles(file).error().description, "Data directory not found: " + file);
    EXPECT_EQ(listDataFiles("~/none").error().description, "Data directory not found: ~/none");
    EXPECT_EQ(ensureDataDirectory(file + "/x").error().description, file + "/x: Not a directory");
    chmod(missing.c_str(), 0);
    const ScopedOrdinaryUser user(directory.path());
    EXPECT_EQ(listDataFiles(missing).error().description, missing + ": Permission denied");
}

} // namespace kavendra
