#include "platform/PrivateDirectory.h"

#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kavendra {

namespace {

/// Whether the path, not followed when it is a link, is a directory that only this user can enter.
bool isPrivate(const std::string& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & 0777U) == 0700U;
}

} // namespace

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
