#include "config/LogFile.h"

#include "tests/TemporaryDirectory.h"

#include <gmock/gmock.h>

namespace kavendra {

TEST(LogFile, lineBeginsWithTheTimeInUTC) {
    using namespace std::chrono;
    const sys_seconds time = sys_days{2026y / January / 2} + 3h + 4min + 5s;
    EXPECT_EQ(formattedLogLine("a\nb", time), "[2026-01-02T03:04:05Z] a\nb\n");
    EXPECT_EQ(formattedLogLine("", sys_days{1969y / December / 31} + 23h), "[1969-12-31T23:00:00Z] \n");
}

TEST(LogFile, isAppendedAndEmptied) {
    const TemporaryDirectory directory;
    const std::string logDirectory = directory.path("a/b");
    ASSERT_TRUE(appendToLog(logDirectory, "one"));
    ASSERT_TRUE(appendToLog(logDirectory, "two"));
    EXPECT_THAT(directory.read("a/b/kavendra.log"),
                testing::MatchesRegex("\\[....-..-..T..:..:..Z\\] one\n\\[....-..-..T..:..:..Z\\] two\n"));
    using std::filesystem::perms;
    const std::string path = logFilePath(logDirectory);
    EXPECT_EQ(std::filesystem::status(path).permissions(), perms(0600));
    std::filesystem::permissions(path, perms(0644));
    ASSERT_TRUE(resetLog(logDirectory));
    EXPECT_EQ(std::filesystem::status(path).permissions(), perms(0600)) << "of an existing log too";
    EXPECT_EQ(directory.read("a/b/kavendra.log"), "");
    EXPECT_TRUE(std::filesystem::exists(directory.path("a/b/kavendra.log")));
    std::filesystem::create_directories(directory.path("kavendra.log"));
    EXPECT_FALSE(appendToLog(directory.path(), "x")) << "a directory at the log's path";
}

} // namespace kavendra
