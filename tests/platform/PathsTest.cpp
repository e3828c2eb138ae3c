#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(Paths, cutsComponents) {
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

TEST(Paths, expandsATildeOnlyInFrontAndOnlyForKnownUsers) {
    setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(expandingTilde("~"), "/home/someone");
    EXPECT_EQ(expandingTilde("~/a b"), "/home/someone/a b");
    EXPECT_EQ(expandingTilde("/a/~"), "/a/~");
    EXPECT_EQ(expandingTilde("~root/x"), "/root/x");
    EXPECT_EQ(expandingTilde("~no-such-user/x"), "~no-such-user/x");
    EXPECT_EQ(typedPath(" \t~/a\n"), "/home/someone/a");
    setenv("HOME", "/", 1);
    EXPECT_EQ(expandingTilde("~/a"), "/a");
}

TEST(Paths, applicationSupportIgnoresARelativeDirectory) {
    setenv("HOME", "/home/someone", 1);
    setenv("XDG_CONFIG_HOME", "/etc/x", 1);
    EXPECT_EQ(applicationSupportDirectory(), "/etc/x");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(applicationSupportDirectory(), "/home/someone/.config");
}

} // namespace kavendra
