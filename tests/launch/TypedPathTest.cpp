#include "launch/TypedPath.h"

#include "tests/TemporaryDirectory.h"
#include "tests/support/Limits.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

TEST(TypedPath, isTheExistingPathInTheText) {
    const TemporaryDirectory home;
    setenv("HOME", home.path().c_str(), 1);
    const std::string folder = home.path("a \"b\" it's\\");
    const std::string odd = home.path("line\nbreak \xFF");
    std::filesystem::create_directories(folder);
    std::filesystem::create_directories(home.path("-rf"));
    home.write("notes.txt", "");
    std::ofstream(odd) << "";
    std::filesystem::create_symlink("nowhere", home.path("dangling"));
    std::filesystem::create_symlink("-rf", home.path("link"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(home.path());

    using Case = std::array<std::string, 4>;
    const std::string notes = home.path("notes.txt");
    for (const auto& [text, path, file, directory] : {
             Case{"~/notes.txt", notes, notes, home.path()},
             Case{" \n\"" + notes + "\"\t", notes, notes, home.path()},
             Case{"'~/notes.txt'", notes, notes, home.path()},
             Case{"'\"' ~/notes.txt \"'\"", notes, notes, home.path()},
             Case{folder, folder, "", folder},
             Case{"\"" + folder + "/\"", folder, "", folder},
             Case{odd, odd, odd, home.path()},
             Case{"~", home.path(), "", home.path()},
             Case{"/", "/", "", "/"},
             Case{"-rf", home.path("-rf"), "", home.path("-rf")},
             Case{"link", home.path("link"), "", home.path("link")},
             Case{"notes.txt", notes, notes, home.path()},
             Case{"/dev//.///null", "/dev/null", "/dev/null", "/dev"},
             Case{"/dev/../", "/dev/..", "", "/dev/.."},
             Case{"", "", "", ""},
             Case{" \"' '\" ", "", "", ""},
             Case{"dangling", "", "", ""},
             Case{"notes.txt/", "", "", ""},
             Case{"~no-such-user/notes.txt", "", "", ""},
             Case{"open notes.txt", "", "", ""},
             Case{"https://example.org/", "", "", ""},
             Case{"file://" + notes, "", "", ""},
             Case{notes + std::string("\0x", 2), "", "", ""},
             Case{std::string(1000000, '/'), "", "", ""},
         }) {
        SCOPED_TRACE(text.substr(0, 100));
        EXPECT_EQ(typedPathOf(text).value_or(""), path);
        EXPECT_EQ(typedPathFileOf(text).value_or(""), file);
        EXPECT_EQ(typedPathDirectoryOf(text).value_or(""), directory);
    }
    std::filesystem::current_path(before);
}

TEST(TypedPath, requiresPermissionToSearchTheDirectory) {
    const TemporaryDirectory home;
    const ScopedOrdinaryUser user(home.path());
    std::filesystem::create_directories(home.path("closed"));
    home.write("closed/notes.txt", "");
    chmod(home.path("closed").c_str(), 0);
    EXPECT_EQ(typedPathOf(home.path("closed")), home.path("closed"));
    EXPECT_EQ(typedPathOf(home.path("closed/notes.txt")), std::nullopt);
    chmod(home.path("closed").c_str(), 0700);
}

} // namespace kavendra
