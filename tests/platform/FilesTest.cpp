#include "platform/Files.h"

#include "tests/platform/FileFixture.h"

#include <gtest/gtest.h>

namespace kavendra {

using Files = FileFixture;

TEST_F(Files, readFileRejectsNonRegularAndOversizedFiles) {
    const std::string file = directory.write("file", std::string("a\0b", 3));
    EXPECT_EQ(readFile(file, 3)->view(), std::string_view("a\0b", 3));
    EXPECT_EQ(readFile(directory.write("empty", ""), 0)->view(), "");
    EXPECT_GT(readFile("/proc/self/status", 1 << 20)->size(), 0U) << "a file with size 0 in its status";
    EXPECT_EQ(reasonOf(readFile("/proc/self/status", 9)), "/proc/self/status: File too large");
    EXPECT_EQ(reasonOf(readFile(file, 2)), "./file: File too large");
    EXPECT_EQ(reasonOf(readFile(directory.path("none"), 9)), "./none: No such file or directory");
    EXPECT_EQ(reasonOf(readFile(directory.path(), 9)), ".: Is a directory");
    for (const std::string& path : {makePipe(), std::string("/dev/zero"), std::string("/etc/passwd\0x", 13)})
        EXPECT_FALSE(readFile(path, 1 << 20)) << path;
}

TEST_F(Files, appendToFileNeedsAnExistingRegularFile) {
    EXPECT_TRUE(appendToFile(directory.write("file", "one\n"), "two\n"));
    EXPECT_EQ(directory.read("file"), "one\ntwo\n");
    EXPECT_FALSE(appendToFile(directory.path("none"), "x"));
    EXPECT_FALSE(appendToFile(makePipe(), "x"));
}

TEST_F(Files, reportMissingPermissions) {
    const std::string file = directory.write("file", "old");
    ASSERT_TRUE(setPermissions(file, 0400));
    ASSERT_TRUE(setPermissions(directory.path(), 0555));
    EXPECT_EQ(statusOf(file).st_mode & 07777U, 0400U);
    EXPECT_EQ(reasonOf(setPermissions(directory.path("none"), 0444)), "./none: No such file or directory");
    {
        const ScopedOrdinaryUser user(directory.path());
        EXPECT_EQ(reasonOf(appendToFile(file, "new")), "./file: Permission denied");
        EXPECT_EQ(reasonOf(createDirectories(directory.path("a/b"))), "./a/b: Permission denied");
    }
    EXPECT_EQ(directory.read("file"), "old");
    EXPECT_TRUE(setPermissions(directory.path(), 0755));
}

TEST_F(Files, createAndListDirectories) {
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(createDirectories(directory.path("a/b/c")));
    directory.write("a/.hidden", "");
    EXPECT_EQ(names("a"), (std::vector<std::string>{".hidden", "b"}));
    EXPECT_EQ(reasonOf(listDirectory(directory.path("none"))), "./none: No such file or directory");
    EXPECT_EQ(reasonOf(createDirectories(directory.path("a/.hidden/x"))), "./a/.hidden/x: Not a directory");
    EXPECT_FALSE(createDirectories(""));
    std::string deep = directory.path();
    for (int level = 0; level < 100000; ++level)
        deep += "/x";
    EXPECT_FALSE(createDirectories(deep)) << "longer than the system allows";
}

TEST_F(Files, nothingExistsAtAPathWithANULByte) {
    const std::string file = directory.write("file", ""), withNUL = directory.path() + std::string("\0x", 2);
    EXPECT_TRUE(exists(file) && !isDirectory(file) && !isExecutableFile(file));
    EXPECT_TRUE(exists(directory.path()) && isDirectory(directory.path()));
    EXPECT_FALSE(exists(directory.path("file/x")) || exists(withNUL) || isDirectory(withNUL));
    EXPECT_FALSE(listDirectory(withNUL) || createDirectories(withNUL) || setPermissions(withNUL, 0) ||
                 removeFile(file + std::string("\0x", 2)) || privateDirectory(withNUL));
    EXPECT_TRUE(removeFile(file) && removeFile(file)) << "a missing file is no error";
    EXPECT_FALSE(exists(file) || removeFile(directory.path()));
}

TEST_F(Files, copyFileCopiesOnlyRegularFiles) {
    const std::string content(1000001, 'x');
    const std::string source = directory.write("a \"b\" \xFF", content);
    const std::string copy = directory.path("-copy"), next = directory.path("next");
    ASSERT_TRUE(copyFile(makeLink(source, "link"), copy));
    EXPECT_EQ(directory.read("-copy"), content);
    EXPECT_EQ(statusOf(copy).st_mode, mode_t{S_IFREG | 0600});
    EXPECT_EQ(reasonOf(copyFile(source, copy)), "./-copy: File exists");
    EXPECT_EQ(reasonOf(copyFile(source, makeLink("nowhere", "dangling"))), "./dangling: File exists");
    EXPECT_EQ(reasonOf(copyFile(makePipe(), next)), "./pipe: Invalid argument");
    EXPECT_EQ(reasonOf(copyFile(source, directory.path("none/next"))),
              "./none/next: No such file or directory");
    {
        const ScopedFileSizeLimit limit(500000);
        EXPECT_EQ(reasonOf(copyFile(source, next)), "./next: File too large");
    }
    EXPECT_FALSE(exists(next)) << "an incomplete copy is removed";
}

TEST_F(Files, privateDirectoryIsOnlyForThisUser) {
    const auto isPrivate = [this](const std::string& path) {
        const struct stat status = statusOf(path);
        return status.st_mode == (S_IFDIR | 0700) && status.st_uid == geteuid();
    };
    const std::string path = directory.path("area");
    const mode_t previous = umask(0);
    for (const mode_t before : {0700U, 0777U, 0500U}) {
        EXPECT_EQ(privateDirectory(path), path);
        EXPECT_TRUE(isPrivate(path));
        EXPECT_TRUE(setPermissions(path, before));
    }
    umask(previous);
    EXPECT_EQ(reasonOf(privateDirectory(directory.path("none/area"))),
              "./none/area: No such file or directory");

    ASSERT_TRUE(createDirectories(directory.path("target")));
    std::vector<std::string> taken{directory.write("file", ""), makeLink("target", "link"),
                                   makeLink("nowhere", "dangling")};
    if (geteuid() == 0) {
        taken.push_back(directory.path("foreign"));
        ASSERT_TRUE(createDirectories(taken.back()));
        ASSERT_EQ(chown(taken.back().c_str(), nobody, nobody), 0);
    }
    for (const std::string& name : taken) {
        const auto made = privateDirectory(name);
        ASSERT_TRUE(made && made->starts_with(name + "-")) << name;
        EXPECT_TRUE(isPrivate(*made)) << *made;
    }
    EXPECT_FALSE(isPrivate(directory.path("target"))) << "the target of a link is not changed";
    EXPECT_FALSE(exists(directory.path("nowhere")));
}

} // namespace kavendra
