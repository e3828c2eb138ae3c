#include "platform/Files.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace kavendra {

namespace {

/// Whether the path, not followed when it is a link, is a directory that only this user can enter.
bool isPrivate(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & 0777U) == 0700U;
}

class Files : public testing::Test {
protected:
    /// Returns the words of a failure with a dot for the directory.
    std::string reasonOf(const auto& result) const {
        const std::string description = result ? "no failure" : result.error().description;
        const bool isHere = description.starts_with(directory.path());
        return isHere ? "." + description.substr(directory.path().size()) : description;
    }

    TemporaryDirectory directory;
};

} // namespace

TEST_F(Files, areReadOnlyWhenRegularAndOnlyUpToTheLimit) {
    const std::string file = directory.write("file", std::string("a\0b", 3));
    EXPECT_EQ(readFile(file, 3)->view(), std::string_view("a\0b", 3));
    EXPECT_EQ(reasonOf(readFile(file, 2)), "./file: File too large");
    EXPECT_EQ(readFile(directory.write("empty", ""), 0)->view(), "");
    EXPECT_EQ(reasonOf(readFile(directory.path("none"), 9)), "./none: No such file or directory");
    EXPECT_EQ(reasonOf(readFile(directory.path(), 9)), ".: Is a directory");
    EXPECT_FALSE(readFile("/dev/zero", 9));
    EXPECT_FALSE(readFile(std::string("/etc/passwd\0x", 13), 1 << 20)) << "a NUL byte must not cut the path";
    EXPECT_GT(readFile("/proc/self/status", 1 << 20)->size(), 0U) << "a file whose size says 0";
}

TEST_F(Files, areNeverWaitedForWhenPipes) {
    const std::string pipe = directory.path("pipe.csv");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(readFile(pipe, 9));
    EXPECT_FALSE(appendToFile(pipe, "x"));
}

TEST_F(Files, nameMissingPermissionsAsTheReason) {
    const std::string file = directory.write("file", "old");
    ASSERT_TRUE(setPermissions(file, 0400));
    ASSERT_TRUE(setPermissions(directory.path(), 0555));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0400));
    EXPECT_EQ(reasonOf(setPermissions(directory.path("none"), 0444)), "./none: No such file or directory");
    {
        const ScopedOrdinaryUser user(directory.path());
        EXPECT_EQ(reasonOf(appendToFile(file, "new")), "./file: Permission denied");
        EXPECT_EQ(reasonOf(createDirectories(directory.path("a/b"))), "./a/b: Permission denied");
    }
    EXPECT_EQ(directory.read("file"), "old");
    chmod(directory.path().c_str(), 0755);
}

TEST_F(Files, areAppendedToWhenTheyExist) {
    EXPECT_TRUE(appendToFile(directory.write("file", "one\n"), "two\n"));
    EXPECT_EQ(directory.read("file"), "one\ntwo\n");
    EXPECT_FALSE(appendToFile(directory.path("none"), "x"));
}

TEST_F(Files, areListedAndTheirDirectoriesCreated) {
    EXPECT_TRUE(createDirectories(directory.path("a/b/c")));
    EXPECT_TRUE(createDirectories(directory.path("a/b/c")));
    directory.write("a/.hidden", "");
    auto names = *listDirectory(directory.path("a"));
    std::ranges::sort(names);
    EXPECT_EQ(names, (std::vector<std::string>{".hidden", "b"}));
    EXPECT_FALSE(listDirectory(directory.path("none")));
    EXPECT_EQ(reasonOf(createDirectories(directory.path("a/.hidden/x"))), "./a/.hidden/x: Not a directory");
    EXPECT_FALSE(createDirectories(""));
    std::string deep = directory.path();
    for (int level = 0; level < 100000; ++level)
        deep += "/x";
    EXPECT_FALSE(createDirectories(deep)) << "too long for the system, and no reason to crash";
}

TEST_F(Files, areCopiedOnlyWhenRegular) {
    const std::string content(1000001, 'x');
    const std::string source = directory.write("a \"b\" \xFF", content);
    const std::string copy = directory.path("-copy"), next = directory.path("next");
    const std::string dangling = directory.path("dangling"), pipe = directory.path("pipe");
    ASSERT_EQ(symlink(source.c_str(), directory.path("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", dangling.c_str()), 0);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);

    ASSERT_TRUE(copyFile(directory.path("link"), copy));
    EXPECT_EQ(directory.read("-copy"), content);
    EXPECT_FALSE(std::filesystem::is_symlink(copy));
    EXPECT_EQ(reasonOf(copyFile(source, copy)), "./-copy: File exists");
    EXPECT_EQ(reasonOf(copyFile(source, dangling)), "./dangling: File exists");
    EXPECT_EQ(reasonOf(copyFile(pipe, next)), "./pipe: Invalid argument");
    EXPECT_EQ(reasonOf(copyFile(directory.path(), next)), ".: Is a directory");
    EXPECT_EQ(reasonOf(copyFile(source, directory.path("none/next"))),
              "./none/next: No such file or directory");
    {
        const ScopedFileSizeLimit limit(500000);
        EXPECT_EQ(reasonOf(copyFile(source, next)), "./next: File too large");
    }
    EXPECT_FALSE(exists(next)) << "nothing is left of a copy that failed";
}

TEST_F(Files, haveAbsolutePaths) {
    const std::string here = std::filesystem::current_path();
    const std::pair<std::string, std::string> cases[] = {
        {"/", "/"},
        {"///", "/"},
        {"/a//b/./c/", "/a/b/c"},
        {"/a/../b", "/a/../b"},
        {"-rf", here + "/-rf"},
        {"./x/", here + "/x"},
        {".", here},
        {"a b\n", here + "/a b\n"},
    };
    for (const auto& [path, absolute] : cases)
        EXPECT_EQ(absolutePath(path), absolute) << path;
}

TEST(PrivateDirectory, isMadeOrTightened) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("area");
    const mode_t previous = umask(0);
    for (const mode_t before : {0700, 0777, 0500}) {
        EXPECT_EQ(privateDirectory(path), path);
        EXPECT_TRUE(isPrivate(path));
        chmod(path.c_str(), before);
    }
    umask(previous);
    EXPECT_EQ(privateDirectory(directory.path("none/area")).error().description,
              directory.path("none/area") + ": No such file or directory");
}

TEST(PrivateDirectory, isAnotherOneWhenTheNameIsTaken) {
    const TemporaryDirectory directory;
    std::filesystem::create_directories(directory.path("target"));
    std::vector<std::string> taken{directory.write("file", ""), directory.path("link"),
                                   directory.path("dangling")};
    ASSERT_EQ(symlink("target", directory.path("link").c_str()), 0);
    ASSERT_EQ(symlink("nowhere", directory.path("dangling").c_str()), 0);
    if (geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        taken.push_back(directory.path("foreign"));
        std::filesystem::create_directories(taken.back());
        ASSERT_EQ(chown(taken.back().c_str(), nobody, nobody), 0);
    }
    for (const std::string& path : taken) {
        const auto made = privateDirectory(path);
        ASSERT_TRUE(made) << path;
        EXPECT_NE(*made, path);
        EXPECT_TRUE(made->starts_with(path + "-"));
        EXPECT_TRUE(isPrivate(*made)) << *made;
    }
    EXPECT_FALSE(isPrivate(directory.path("target"))) << "what a link leads to is not touched";
    EXPECT_FALSE(std::filesystem::exists(directory.path("nowhere")));
}

} // namespace kavendra
