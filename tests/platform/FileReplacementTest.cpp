#include "platform/FileReplacement.h"

#include "platform/FileDescriptor.h"
#include "tests/platform/FileFixture.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

namespace kavendra {

namespace {

const std::string oldContent = "the old content";

class FileReplacement : public FileFixture {
protected:
    /// Saves longer and shorter contents; returns whether the file was written in place.
    bool savesInPlace(const std::string& path) const {
        const ino_t before = statusOf(path).st_ino;
        for (const std::string& content : {std::string(100000, 'x'), std::string(), std::string("short")}) {
            EXPECT_EQ(reasonOf(replaceFile(path, content)), "no failure");
            EXPECT_EQ(readFile(path, 1 << 20)->view(), content);
        }
        return statusOf(path).st_ino == before;
    }

    std::string file = directory.write("file", oldContent);
};

} // namespace

TEST_F(FileReplacement, keepsModeOwnerAndSymbolicLinks) {
    const uid_t owner = geteuid() == 0 ? nobody : geteuid();
    ASSERT_EQ(chown(file.c_str(), owner, static_cast<gid_t>(-1)), 0);
    ASSERT_TRUE(setPermissions(file, 0640));
    std::filesystem::create_directories(directory.path("a/b"));
    std::filesystem::create_directories(directory.path("b"));
    makeLink("../b/second", "a/first"); // relative to the directory of the link: not a/b/second
    makeLink("missing", "a/b/second");
    makeLink("../file", "b/second");
    EXPECT_FALSE(savesInPlace(makeLink("a/first", "link")));

    EXPECT_EQ(directory.read("file"), "short");
    EXPECT_EQ(statusOf(file).st_mode & 07777U, 0640U);
    EXPECT_EQ(statusOf(file).st_uid, owner);
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.path("a/first")));
    EXPECT_EQ(names(), (std::vector<std::string>{"a", "b", "file", "link"})) << "no temporary file is left";
}

TEST_F(FileReplacement, createsMissingFiles) {
    const std::string link = makeLink("new-by-link", "link");
    const mode_t previous = umask(027);
    EXPECT_TRUE(replaceFile(link, "one"));
    EXPECT_TRUE(writeFileAtomically(directory.path("private"), "two", 0600));
    umask(previous);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(directory.read("new-by-link"), "one");
    EXPECT_EQ(statusOf(directory.path("new-by-link")).st_mode & 07777U, 0640U);
    EXPECT_EQ(statusOf(directory.path("private")).st_mode & 07777U, 0600U);

    EXPECT_TRUE(writeFileAtomically(link, "three"));
    EXPECT_FALSE(std::filesystem::is_symlink(link)) << "the link itself is replaced";
    EXPECT_EQ(directory.read("new-by-link"), "one");
}

TEST_F(FileReplacement, rejectsNonRegularFiles) {
    EXPECT_FALSE(replaceFile(makePipe(), "x")) << "without waiting for a reader";
    EXPECT_EQ(reasonOf(replaceFile(directory.path(), "x")), ".: Is a directory");
    EXPECT_EQ(reasonOf(replaceFile(makeLink("loop", "loop"), "x")),
              "./loop: Too many levels of symbolic links");
    EXPECT_FALSE(replaceFile(file + std::string("\0x", 2), "x"));
    EXPECT_EQ(reasonOf(replaceFile(directory.path("none/file"), "x")),
              "./none/file: No such file or directory");
    EXPECT_EQ(directory.read("file"), oldContent);
}

TEST_F(FileReplacement, writesInPlaceWhereRenameIsNotPossible) {
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

TEST_F(FileReplacement, worksWithoutFallocate) {
    const ScopedMount disk("ramfs", directory.path(), "ramfs"); // has no fallocate(2)
    if (!disk.isMounted())
        GTEST_SKIP() << "mounting a file system is not allowed here";
    directory.write("file", oldContent);
    EXPECT_FALSE(savesInPlace(file));
    ASSERT_EQ(link(file.c_str(), directory.path("other-name").c_str()), 0);
    EXPECT_TRUE(savesInPlace(file));
}

TEST_F(FileReplacement, keepsTheOldContentOnFailure) {
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
            EXPECT_EQ(names().size(), isLinked ? 2U : 1U) << "no temporary file is left";
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

TEST_F(FileReplacement, removesTemporaryFilesOfKilledProcesses) {
    const std::string prefix = ".file.kavendra-tmp-", uuid = "01234567-89AB-CDEF-0123-456789ABCDEF";
    const std::string locked = prefix + "1" + uuid.substr(1), foreign = prefix + "2" + uuid.substr(1);
    std::vector<std::string> kept{
        prefix, locked, prefix + "backup", prefix + uuid + "x", ".other.kavendra-tmp-" + uuid, "file"};
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
