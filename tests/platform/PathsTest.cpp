#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace kavendra {

TEST(Paths, splitIntoComponents) {
    struct Case {
        const char *path, *last, *parent, *extension;
    };
    for (const Case& c :
         {Case{"/a/b.CSV", "b.CSV", "/a", "csv"}, Case{"/a/b/", "b", "/a", ""}, Case{"/a", "a", "/", ""},
          Case{"/", "/", "/", ""}, Case{"b.tar.gz", "b.tar.gz", ".", "gz"}, Case{"/x/.csv", ".csv", "/x", ""},
          Case{"/x/.hidden.csv", ".hidden.csv", "/x", "csv"}, Case{"/a.d/b", "b", "/a.d", ""},
          Case{"/a//b", "b", "/a", ""}}) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(lastPathComponent(c.path), c.last);
        EXPECT_EQ(parentPath(c.path), c.parent);
        EXPECT_EQ(lowercasedExtension(c.path), c.extension);
    }
}

TEST(Paths, expandALeadingTildeForKnownUsers) {
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(expandingTilde("~"), "/home/someone");
    EXPECT_EQ(expandingTilde("~/a b"), "/home/someone/a b");
    EXPECT_EQ(expandingTilde("/a/~"), "/a/~");
    EXPECT_EQ(expandingTilde("~root/x"), "/root/x");
    EXPECT_EQ(expandingTilde("~no-such-user/x"), "~no-such-user/x");
    EXPECT_EQ(expandedPath(" \t~/a\n"), "/home/someone/a");
    setenv("HOME", "/", 1);
    EXPECT_EQ(expandingTilde("~/a"), "/a");
}

TEST(Paths, applicationSupportDirectoryIgnoresARelativePath) {
    setenv("HOME", "/home/someone", 1);
    setenv("XDG_CONFIG_HOME", "/etc/x", 1);
    EXPECT_EQ(applicationSupportDirectory(), "/etc/x");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(applicationSupportDirectory(), "/home/someone/.config");
}

TEST(Paths, executablePathIsTheRunningFileOrItsAppImage) {
    const std::string file = executablePath();
    EXPECT_TRUE(file.starts_with('/') && std::filesystem::equivalent(file, "/proc/self/exe")) << file;
    const std::string directory(parentPath(file));
    struct Case {
        std::string image, mount, expected;
    };
    for (const auto& [image, mount, expected] : {
             Case{"/opt/k.AppImage", directory, "/opt/k.AppImage"},
             Case{"/opt/k.AppImage", "/tmp/.mount_other", file},
             Case{"/opt/k.AppImage", directory.substr(0, directory.size() - 1), file},
             Case{"/opt/k.AppImage", "", file},
             Case{"k.AppImage", directory, file},
         }) {
        setenv("APPIMAGE", image.c_str(), 1);
        setenv("APPDIR", mount.c_str(), 1);
        EXPECT_EQ(executablePath(), expected) << image << " at " << mount;
    }
}

} // namespace kavendra
