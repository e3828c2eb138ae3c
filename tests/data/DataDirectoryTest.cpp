#include "data/DataDirectory.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

TEST(DataDirectory, listsDataFilesInTheOrderOfTheirNames) {
    const TemporaryDirectory directory;
    for (const char* name : {"_old.csv", "Notes.CSV", ".hidden.csv", "old.xls", "list.txt", "b.csv", "A.xlsx",
                             "csv", "c.XLSM", "~$book.xlsx", ".csv"})
        directory.write(name, "");
    std::filesystem::create_directories(directory.path("folder/sub.csv"));
    std::filesystem::create_directories(directory.path("directory.csv"));
    const auto files = listDataFiles(directory.path());
    ASSERT_TRUE(files);
    std::string names;
    for (const DataFile& file : *files) {
        names += file.name + (file.kind == DataFileKind::workbook ? " workbook, " : ", ");
        EXPECT_EQ(file.path, directory.path(file.name));
    }
    EXPECT_EQ(names, ".hidden.csv, ~$book.xlsx workbook, A.xlsx workbook, b.csv, c.XLSM workbook, "
                     "directory.csv, Notes.CSV, ");
}

TEST(DataDirectory, isCreatedOnlyIfNothingExistsAtThePath) {
    const TemporaryDirectory directory;
    const std::string missing = directory.path("a/b"), file = directory.write("file", "");
    ASSERT_TRUE(ensureDataDirectory(missing));
    EXPECT_TRUE(listDataFiles(missing)->empty());
    EXPECT_TRUE(ensureDataDirectory(file));
    EXPECT_EQ(listDataFiles(file).error().description, "Data directory not found: " + file);
    EXPECT_EQ(listDataFiles("~/none").error().description, "Data directory not found: ~/none");
    EXPECT_EQ(ensureDataDirectory(file + "/x").error().description, file + "/x: Not a directory");
    chmod(missing.c_str(), 0);
    const ScopedOrdinaryUser user(directory.path());
    EXPECT_EQ(listDataFiles(missing).error().description, missing + ": Permission denied");
}

} // namespace kavendra
