#include "platform/FileReplacement.h"

#include "platform/FileDescriptor.h"
#include "platform/Files.h"
#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <algorithm>

namespace kavendra {

namespace {

constexpr uid_t nobody = 65534;
const std::string oldContent = "the old content";

class FileReplacement : public testing::Test {
protected:
    /// Returns the words of a failure with a dot for the directory.
    std::string reasonOf(const auto& result) const {
        const std::string description = result ? "no failure" : result.error().description;
        const bool isHere = description.starts_with(directory.path());
        return isHere ? "." + description.substr(directory.path().size()) : description;
    }

    struct stat statusOf(const std::string& path) const {
        struct stat status{};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status;
    }

    std::vector<std::string> names() const {
        auto result = *listDirectory(directory.path());
        std::ranges::sort(result);
        return result;
    }

    /// Saves longer and shorter contents; returns whether the file was written in place.
    bool savesInPlace(const std::string& path) const {
        const ino_t before = statusOf(path).st_ino;
        for (const std::string& content : {std::string(100000, 'x'), std::string(), std::string("short")}) {
            EXPECT_EQ(reasonOf(replaceFile(path, content)), "no failure");
            EXPECT_EQ(readFile(path, 1 << 20)->view(), content);
        }
        return statusOf(path).st_ino == before;
    }

    TemporaryDirectory directory;
    std::string file = directory.write("file", oldContent);
};

} // namespace

TEST_F(FileReplacement, keepsModeOwnerAndLinks) {
    const uid_t owner = geteuid() == 0 ? nobody : geteuid();
    ASSERT_EQ(chown(file.c_str(), owner, static_cast<gid_t>(-1)), 0);
    ASSERT_TRUE(setPermissions(file, 0640));
    std::filesystem::create_directories(directory.path("a/b"));
    ASSERT_EQ(symlink("../b/second", directory.path("a/first").c_str()), 0);
    ASSERT_EQ(symlink("../../file", directory.path("a/b/second").c_str()), 0);
    ASSERT_EQ(symlink("a/first", directory.path("link").c_str()), 0);

    // Not below "a" but beside it: ".." counts from where the link is.
    std::filesystem::create_directories(directory.path("b"));
    ASSERT_EQ(symlink("../file", directory.path("b/second").c_str()), 0);
    EXPECT_FALSE(savesInPlace(directory.path("link")));

    EXPECT_EQ(directory.read("file"), "short");
    EXPECT_EQ(statusOf(file).st_mode & 07777U, 0640U);
    EXPECT_EQ(statusOf(file).st_uid, owner);
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path("a/first")));
    EXPECT_EQ(names(), (std::vector<std::string>{"a", "b", "file", "link"})) << "no temporary file stays";
}

TEST_F(FileReplacement, createsWhatIsMissing) {
    ASSERT_EQ(symlink("new-by-link", directory.path("link").c_str()), 0);
    const mode_t previous = umask(027);
    EXPECT_TRUE(replaceFile(directory.path("link"), "one"));
    EXPECT_TRUE(writeFileAtomically(directory.path("private"), "two", 0600));
    umask(previous);
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path("link")));
    EXPECT_EQ(directory.read("new-by-link"), "one");
    EXPECT_EQ(statusOf(directory.path("new-by-link")).st_mode & 07777U, 0640U);
    EXPECT_EQ(statusOf(directory.path("private")).st_mode & 07777U, 0600U);

    EXPECT_TRUE(writeFileAtomically(directory.path("link"), "three"));
    EXPECT_FALSE(std::filesystem::is_symlink(directory.path("link"))) << "the link itself is replaced";
    EXPECT_EQ(directory.read("new-by-link"), "one");
}

TEST_F(FileReplacement, refusesWhatIsNoFile) {
    const std::string pipe = directory.path("pipe"), loop = directory.path("loop");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_EQ(symlink("loop", loop.c_str()), 0);
    EXPECT_FALSE(replaceFile(pipe, "x")) << "and does not wait for a reader";
    EXPECT_EQ(reasonOf(replaceFile(directory.path(), "x")), ".: Is a directory");
    EXPECT_EQ(reasonOf(replaceFile(loop, "x")), "./loop: Too many levels of symbolic links");
    EXPECT_FALSE(replaceFile(file + std::string("\0x", 2), "x"));
    EXPECT_EQ(reasonOf(replaceFile(directory.path("none/file"), "x")),
              "./none/file: No such file or directory");
    EXPECT_EQ(directory.read("file"), oldContent);
}

TEST_F(FileReplacement, writesInPlaceWhatCannotBeReplaced) {
    ASSERT_EQ(link(file.c_str(), directory.path("other-name").c_str()), 0);
    EXPECT_TRUE(savesInPlace(file)) << "hard links";
    EXPECT_EQ(directory.read("other-name"), "short");
    std::filesystem::remove(directory.path("other-name"));
    EXPECT_FALSE(savesInPlace(file));

    if (geteuid() != 0)
        GTEST_SKIP() << "the other cases need root";
    ASSERT_TRUE(setPermissions(file, 0666));
    struct Case {
        const char* name;
        uid_t directoryOwner;
        mode_t directoryMode;
    };
    for (const auto& [name, directoryOwner, directoryMode] : {
             Case{"a file of another user", nobody, 0755},
             Case{"a read-only directory", 0, 0555},
             Case{"another user's file in a sticky directory", 0, 01777},
         }) {
        ASSERT_EQ(chown(directory.path().c_str(), directoryOwner, 0), 0);
        ASSERT_TRUE(setPermissions(directory.path(), directoryMode));
        const ScopedOrdinaryUser user;
        EXPECT_TRUE(savesInPlace(file)) << name;
        EXPECT_EQ(statusOf(file).st_uid, 0U);
    }
    const ScopedMount bound(file, file, nullptr, MS_BIND);
    if (bound.isMounted()) {
        EXPECT_TRUE(savesInPlace(file)) << "a bind mount";
        EXPECT_EQ(names(), std::vector<std::string>{"file"});
    }
}

TEST_F(FileReplacement, worksWhereSpaceCannotBeReserved) {
    const ScopedMount disk("ramfs", directory.path(), "ramfs"); // has no fallocate(2)
    if (!disk.isMounted())
        GTEST_SKIP() << "mounting a file system is not allowed here";
    directory.write("file", oldContent);
    EXPECT_FALSE(savesInPlace(file));
    ASSERT_EQ(link(file.c_str(), directory.path("other-name").c_str()), 0);
    EXPECT_TRUE(savesInPlace(file));
}

TEST_F(FileReplacement, keepsTheOldContentWhenItFails) {
    const std::string tooLong(200000, 'x');
    const auto tryAll = [&](const std::string& reason) {
        for (const bool isLinked : {false, true}) {
            directory.write("file", oldContent);
            if (isLinked) {
                ASSERT_EQ(link(file.c_str(), directory.path("other-name").c_str()), 0);
            }
            EXPECT_EQ(reasonOf(replaceFile(file, tooLong)), "./file: " + reason);
            EXPECT_EQ(reasonOf(writeFileAtomically(directory.path("new"), tooLong)), "./new: " + reason);
            EXPECT_EQ(directory.read("file"), oldContent) << reason;
            EXPECT_EQ(names().size(), isLinked ? 2U : 1U) << "neither an empty nor a temporary file stays";
        }
        std::filesystem::remove(directory.path("other-name"));
    };
    {
        const ScopedFileSizeLimit limit(4096);
        tryAll("File too large");
    }
    if (geteuid() == 0) {
        const ScopedMount disk("tmpfs", directory.path(), "tmpfs", 0, "size=65536");
        if (disk.isMounted())
            tryAll("No space left on device");
    }
    ASSERT_TRUE(setPermissions(file, 0400));
    const ScopedOrdinaryUser user(directory.path());
    EXPECT_EQ(reasonOf(replaceFile(file, "new")), "./file: Permission denied")
        << "a protected file is not replaced";
    EXPECT_FALSE(replaceFile("/proc/version", "new"));
}

TEST_F(FileReplacement, removesWhatKilledSavesLeft) {
    const std::string uuid = "01234567-89AB-CDEF-0123-456789ABCDEF";
    const std::string prefix = ".file.kavendra-tmp-";
    const std::string locked = prefix + "11234567-89AB-CDEF-0123-456789ABCDEF";
    const std::string foreign = prefix + "21234567-89AB-CDEF-0123-456789ABCDEF";
    std::vector<std::string> kept{".file.kavendra-tmp-",
                                  prefix + "backup",
                                  prefix + uuid + "x",
                                  ".other" + prefix.substr(5) + uuid,
                                  "file",
                                  locked};
    for (const std::string& name : kept)
        directory.write(name, "");
    const FileDescriptor saving(open(directory.path(locked).c_str(), O_WRONLY));
    ASSERT_EQ(flock(saving.get(), LOCK_EX), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(directory.write(foreign, "").c_str(), nobody, nobody), 0);
        kept.push_back(foreign);
    }
    directory.write(prefix + uuid, "a part");
    EXPECT_TRUE(replaceFile(file, "new"));
    std::ranges::sort(kept);
    EXPECT_EQ(names(), kept);
}

} // namespace kavendra
