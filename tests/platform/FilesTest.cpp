#include "platform/Files.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

namespace kavendra {

namespace {

std::string reasonOf(const auto& result) {
    return result ? "no failure" : result.error().description;
}

} // namespace

TEST(Files, readsOnlyRegularFilesAndOnlyUpToTheLimit) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", std::string("a\0b", 3));
    EXPECT_EQ(readFile(file, 3)->view(), std::string_view("a\0b", 3));
    EXPECT_EQ(reasonOf(readFile(file, 2)), file + ": File too large");
    EXPECT_EQ(readFile(directory.write("empty", ""), 0)->view(), "");
    EXPECT_EQ(reasonOf(readFile(directory.path("none"), 9)),
              directory.path("none") + ": No such file or directory");
    EXPECT_EQ(reasonOf(readFile(directory.path(), 9)), directory.path() + ": Is a directory");
    EXPECT_FALSE(readFile("/dev/zero", 9));
    EXPECT_FALSE(readFile(std::string("/etc/passwd\0x", 13), 1 << 20)) << "a NUL byte must not cut the path";
    EXPECT_GT(readFile("/proc/self/status", 1 << 20)->size(), 0U) << "a file whose size says 0";
}

TEST(Files, neverWaitsForAPipe) {
    const TemporaryDirectory directory;
    const std::string pipe = directory.path("pipe.csv");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(pipe, 9));
    EXPECT_FALSE(appendToFile(pipe, "x"));
    EXPECT_FALSE(writeFileInPlace(pipe, "x"));
}

TEST(Files, replacesTheWholeContentInPlace) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", "a long old content");
    ASSERT_EQ(symlink(file.c_str(), directory.path("link").c_str()), 0);
    ASSERT_TRUE(writeFileInPlace(directory.path("link"), "new"));
    EXPECT_EQ(directory.read("file"), "new") << "the link still leads to the file";
    ASSERT_TRUE(writeFileInPlace(file, std::string(100000, 'x')));
    EXPECT_EQ(directory.read("file"), std::string(100000, 'x'));
    ASSERT_TRUE(writeFileInPlace(file, ""));
    EXPECT_EQ(directory.read("file"), "");
}

TEST(Files, aFullDiskLeavesTheOldContent) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", "old");
    const std::string tooLong(200000, 'x');
    {
        const ScopedFileSizeLimit limit(4096);
        EXPECT_EQ(reasonOf(writeFileInPlace(file, tooLong)), file + ": File too large");
        EXPECT_FALSE(writeFileInPlace(directory.path("new"), tooLong));
        EXPECT_FALSE(writeFileAtomically(file, tooLong));
    }
    EXPECT_EQ(directory.read("file"), "old");
    const auto left = listDirectory(directory.path());
    EXPECT_EQ(*left, std::vector<std::string>{"file"}) << "neither an empty nor a temporary file stays";
}

TEST(Files, aSmallFileSystemThatIsFullLeavesTheOldContent) {
    const TemporaryDirectory directory;
    const SmallFileSystem disk(directory.path(), 64 * 1024);
    if (!disk.isMounted())
        GTEST_SKIP() << "mounting a file system is not allowed here";
    const std::string file = directory.write("file", "old");
    EXPECT_EQ(reasonOf(writeFileInPlace(file, std::string(100000, 'x'))), file + ": No space left on device");
    EXPECT_EQ(directory.read("file"), "old");
    directory.write("filler", std::string(60000, 'x'));
    EXPECT_FALSE(writeFileAtomically(file, std::string(8192, 'x')));
    EXPECT_EQ(directory.read("file"), "old");
}

TEST(Files, permissionsAreNamedAsTheReason) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", "old");
    chmod(file.c_str(), 0400);
    chmod(directory.path().c_str(), 0555);
    {
        const ScopedOrdinaryUser user(directory.path());
        EXPECT_EQ(reasonOf(writeFileInPlace(file, "new")), file + ": Permission denied");
        EXPECT_EQ(reasonOf(writeFileInPlace(directory.path("new"), "new")),
                  directory.path("new") + ": Permission denied");
        EXPECT_FALSE(writeFileAtomically(file, "new"));
        EXPECT_EQ(reasonOf(createDirectories(directory.path("a/b"))),
                  directory.path("a/b") + ": Permission denied");
    }
    EXPECT_EQ(directory.read("file"), "old");
    chmod(directory.path().c_str(), 0755);
}

TEST(Files, writesAtomicallyWithOrdinaryPermissions) {
    const TemporaryDirectory directory;
    const mode_t previous = umask(022);
    ASSERT_TRUE(writeFileAtomically(directory.path("file"), "one"));
    ASSERT_TRUE(writeFileAtomically(directory.path("file"), ""));
    umask(previous);
    struct stat status{};
    stat(directory.path("file").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0644U);
    EXPECT_EQ(status.st_size, 0);
    EXPECT_EQ(listDirectory(directory.path())->size(), 1U);
}

TEST(Files, listsAndCreatesDirectories) {
    const TemporaryDirectory directory;
    EXPECT_TRUE(createDirectories(directory.path("a/b/c")));
    EXPECT_TRUE(createDirectories(directory.path("a/b/c")));
    directory.write("a/.hidden", "");
    auto names = *listDirectory(directory.path("a"));
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::string>{".hidden", "b"}));
    EXPECT_EQ(reasonOf(createDirectories(directory.path("a/.hidden/x"))),
              directory.path("a/.hidden/x") + ": Not a directory");
    EXPECT_FALSE(createDirectories(""));
    std::string deep = directory.path();
    for (int level = 0; level < 100000; ++level)
        deep += "/x";
    EXPECT_FALSE(createDirectories(deep)) << "too long for the system, and no reason to crash";
    EXPECT_FALSE(listDirectory(directory.path("none")));
}

TEST(Files, appendsToAnExistingFileOnly) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", "one\n");
    EXPECT_TRUE(appendToFile(file, "two\n"));
    EXPECT_EQ(directory.read("file"), "one\ntwo\n");
    EXPECT_FALSE(appendToFile(directory.path("none"), "x"));
}

TEST(Files, aDirectoryIsNotExecutable) {
    EXPECT_TRUE(isExecutableFile("/bin/sh"));
    EXPECT_FALSE(isExecutableFile("/bin"));
    EXPECT_FALSE(isExecutableFile("/etc/passwd"));
}

TEST(Files, copiesRegularFilesOnly) {
    const TemporaryDirectory directory;
    const std::string content(1000001, 'x');
    const std::string source = directory.write("a \"b\" \xFF", content);
    const std::string copy = directory.path("-copy");
    ASSERT_EQ(symlink(source.c_str(), directory.path("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", directory.path("dangling").c_str()), 0);
    ASSERT_EQ(mkfifo(directory.path("pipe").c_str(), 0600), 0);

    ASSERT_TRUE(copyFile(directory.path("link"), copy));
    EXPECT_EQ(directory.read("-copy"), content);
    EXPECT_FALSE(std::filesystem::is_symlink(copy));
    EXPECT_EQ(reasonOf(copyFile(source, copy)), copy + ": File exists");
    EXPECT_EQ(reasonOf(copyFile(source, directory.path("dangling"))),
              directory.path("dangling") + ": File exists");

    const std::string next = directory.path("next");
    EXPECT_EQ(reasonOf(copyFile(directory.path("pipe"), next)),
              directory.path("pipe") + ": Invalid argument");
    EXPECT_EQ(reasonOf(copyFile(directory.path(), next)), directory.path() + ": Is a directory");
    EXPECT_EQ(reasonOf(copyFile(source, directory.path("none/next"))),
              directory.path("none/next") + ": No such file or directory");
    {
        const ScopedFileSizeLimit limit(500000);
        EXPECT_EQ(reasonOf(copyFile(source, next)), next + ": File too large");
    }
    EXPECT_FALSE(exists(next)) << "nothing is left of a copy that failed";
}

TEST(Files, setsPermissions) {
    const TemporaryDirectory directory;
    const std::string file = directory.write("file", "");
    ASSERT_TRUE(setPermissions(file, 0444));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0444));
    EXPECT_EQ(reasonOf(setPermissions(directory.path("none"), 0444)),
              directory.path("none") + ": No such file or directory");
}

TEST(Files, makesPathsAbsolute) {
    const std::string here = std::filesystem::current_path();
    const std::vector<std::pair<std::string, std::string>> cases{{"/", "/"},
                                                                 {"///", "/"},
                                                                 {"/a//b/./c/", "/a/b/c"},
                                                                 {"/a/../b", "/a/../b"},
                                                                 {"-rf", here + "/-rf"},
                                                                 {"./x/", here + "/x"},
                                                                 {".", here},
                                                                 {"a b\n", here + "/a b\n"}};
    for (const auto& [path, absolute] : cases)
        EXPECT_EQ(absolutePath(path), absolute) << path;
}

} // namespace kavendra
