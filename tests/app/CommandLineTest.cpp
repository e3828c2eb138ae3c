#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(CommandLine, acceptsWhatASessionManagerStartsAgain) {
    char program[] = "kavendra", option[] = "-session", id[] = "10a_1";
    char* arguments[] = {program, option, id, nullptr};
    EXPECT_FALSE(exitStatusOfCommandLine(3, arguments));
}

} // namespace kavendra
