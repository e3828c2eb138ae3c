#include "platform/ExecutableSearch.h"

#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace kavendra {

namespace {

class ExecutableSearch : public testing::Test {
protected:
    TemporaryDirectory directory;
};

} // namespace

TEST_F(ExecutableSearch, usesTheOrderOfPATH) {
    const std::string first = directory.writeProgram("first/tool"),
                      second = directory.writeProgram("second/tool"), env = directory.writeProgram("own/env");
    directory.write("not-executable/tool", "");
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
    const std::string tool = directory.writeProgram("bin/tool");
    setenv("HOME", directory.path().c_str(), 1);
    EXPECT_EQ(resolveExecutable(tool, ""), tool);
    EXPECT_EQ(resolveExecutable("~/bin/tool", ""), tool);
    for (const std::string& name : std::vector<std::string>{
             "./env", "no-such-directory/env", "/", "/usr/bin", directory.write("plain", ""),
             std::string("/usr/bin/env\0", 13), "", "  ", ".", ".."})
        EXPECT_EQ(resolveExecutable(name, "/usr/bin"), std::nullopt) << name;
}

} // namespace kavendra
