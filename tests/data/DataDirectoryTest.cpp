#include "data/DataDirectory.h"

#include "data/LaunchError.h"
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

std::string failureOf(const TemporaryDirectory& directory) {
    const auto items = loadAllItems(directory.path(), false, "", ignoreLine);
    return items ? "no failure" : items.error().description;
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
    const TemporaryDirectory directory;
    const TemporaryDirectory resources;
    const std::string builtin = resources.write("Built-in.csv", header + "built,,,\n");
    directory.write("b.csv", header + "2,,,\n1,,,");
    directory.write("A.csv", "\xEF\xBB\xBF" + header + "3,,,\n");
    const auto items = loadAllItems(directory.path(), true, builtin, ignoreLine);
    ASSERT_TRUE(items);
    EXPECT_EQ(titles(*items),
              (std::vector<std::string>{"built of (Built-in)", "3 of A.csv", "2 of b.csv", "1 of b.csv"}));
    const auto again = loadAllItems(directory.path(), false, builtin, ignoreLine);
    EXPECT_EQ(titles(*again), (std::vector<std::string>{"3 of A.csv", "2 of b.csv", "1 of b.csv"}));
    EXPECT_FALSE(items->indexOf(again->id(0))) << "every load gives new identities";
    EXPECT_EQ(loadAllItems(directory.path(), true, resources.path("none"), ignoreLine)->size(), 3U);
}

TEST(DataDirectory, readsWorkbooksBesideCSVFiles) {
    const TemporaryDirectory directory;
    const auto workbook = [](const char* title) {
        return makeZip(zipEntries(workbookParts({headerRow() + inlineRow({title})})));
    };
    directory.write("b.csv", header + "2,,,\n");
    directory.write("A.xlsx", workbook("1"));
    directory.write("c.XLSM", workbook("3"));
    const auto items = loadAllItems(directory.path(), false, "", ignoreLine);
    ASSERT_TRUE(items) << items.error().description;
    EXPECT_EQ(titles(*items), (std::vector<std::string>{"1 of A.xlsx", "2 of b.csv", "3 of c.XLSM"}));
    directory.write("~$A.xlsx", std::string(165, 'x')); // what Excel puts beside a workbook that it has open
    EXPECT_EQ(failureOf(directory), "Invalid Excel format: ~$A.xlsx: Not a zip archive");
}

TEST(DataDirectory, oneBadFileFailsTheWholeLoadWithItsMessage) {
    struct Case {
        const char* name;
        std::string bytes;
        std::string message;
    };
    for (const Case& c :
         {Case{"no encoding", "\xFF\x80\xFF", "Invalid CSV format: x.csv: failed to decode text"},
          Case{"quote", header + "a,\"b", "Invalid CSV format: unterminated quote"},
          Case{"column", "Title,Command\n", "CSV is missing required columns: x.csv: Params"},
          Case{"empty first line", "\n" + header, "CSV is missing required columns: x.csv: Title"}}) {
        SCOPED_TRACE(c.name);
        const TemporaryDirectory directory;
        directory.write("good.csv", header + "good,,,\n");
        directory.write("x.csv", c.bytes);
        EXPECT_EQ(failureOf(directory), c.message);
    }
}

TEST(DataDirectory, whatCannotBeReadAsAFileSaysSo) {
    const std::string message = "Invalid CSV format: x.csv: failed to read file";
    const TemporaryDirectory withDirectory;
    std::filesystem::create_directories(withDirectory.path("x.csv"));
    EXPECT_EQ(failureOf(withDirectory), message);
    const TemporaryDirectory withPipe;
    ASSERT_EQ(mkfifo(withPipe.path("x.csv").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(withPipe), message);
    std::filesystem::create_directories(withDirectory.path("a.xlsx"));
    EXPECT_EQ(failureOf(withDirectory),
              "Invalid Excel format: " + withDirectory.path("a.xlsx: ") + "Is a directory");
    ASSERT_EQ(mkfifo(withPipe.path("a.xlsx").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(withPipe), "Invalid Excel format: " + withPipe.path("a.xlsx: ") + "Invalid argument");
    const TemporaryDirectory withDanglingLink;
    std::filesystem::create_symlink("nowhere", withDanglingLink.path("x.csv"));
    EXPECT_EQ(failureOf(withDanglingLink), message);
    const TemporaryDirectory withoutPermission;
    chmod(withoutPermission.write("x.csv", header).c_str(), 0);
    const ScopedOrdinaryUser user(withoutPermission.path());
    EXPECT_EQ(failureOf(withoutPermission), message);
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
