#include "platform/ExecutableSearch.h"

#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kavendra {

namespace {

class ExecutableSearch : public testing::Test {
protected:
    std::string program(const std::string& name, mode_t mode = 0755) const {
        std::filesystem::create_directories(std::filesystem::path(directory.path(name)).parent_path());
        const std::string path = directory.write(name, "#!/bin/sh\n");
        chmod(path.c_str(), mode);
        return path;
    }

    TemporaryDirectory directory;
};

} // namespace

TEST_F(ExecutableSearch, usesTheOrderOfPATH) {
    const std::string first = program("first/tool"), second = program("second/tool"),
                      env = program("own/env");
    program("not-executable/tool", 0644);
    std::filesystem::create_directories(directory.path("directory/tool"));
    std::string pathVariable = ":";
    for (const char* name : {"missing", "not-executable", "directory", "first", "second"})
        pathVariable += directory.path(name) + "::";
    EXPECT_EQ(resolveExecutable(" \ttool\n", pathVariable), first);
    EXPECT_EQ(resolveExecutable("tool", directory.path("second")), second);
    EXPECT_EQ(resolveExecutable("no-such-tool", pathVariable), std::nullopt);
    EXPECT_EQ(resolveExecutable("env", ""), "/usr/bin/env") << "the usual directories are searched last";
    EXPECT_EQ(resolveExecutable("env", directory.path("own")), env);

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory.path("first"));
    EXPECT_EQ(resolveExecutable("tool", "::"), std::nullopt) << "an empty entry is not the current directory";
    EXPECT_EQ(resolveExecutable("tool", "."), first);
    std::filesystem::current_path(before);
}

TEST_F(ExecutableSearch, doesNotSearchForNamesWithASlash) {
    const std::string tool = program("bin/tool");
    setenv("HOME", directory.path().c_str(), 1);
    EXPECT_EQ(resolveExecutable(tool, ""), tool);
    EXPECT_EQ(resolveExecutable("~/bin/tool", ""), tool);
    for (const std::string& name :
         std::vector<std::string>{"./env", "no-such-directory/env", "/", "/usr/bin", program("plain", 0644),
                                  std::string("/usr/bin/env\0", 13), "", "  ", ".", ".."})
        EXPECT_EQ(resolveExecutable(name, "/usr/bin"), std::nullopt) << name;
}

} // namespace kavendra
