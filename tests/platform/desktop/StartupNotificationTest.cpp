#include "platform/desktop/StartupNotification.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(StartupNotification, idsAreUniqueAndHaveATime) {
    EXPECT_NE(newStartupID(5), newStartupID(5));
    for (const auto& [id, time] : std::vector<std::pair<std::string, std::optional<std::uint32_t>>>{
             {newStartupID(4294967295), 4294967295},
             {"a_TIME1_TIME20", 20},
             {"a_TIME0", 0},
             {"a_TIME4294967296", std::nullopt},
             {"a_TIME-1", std::nullopt},
             {"a_TIME1x", std::nullopt},
             {"a_TIME", std::nullopt},
             {"", std::nullopt},
         })
        EXPECT_EQ(timeOfStartupID(id), time) << id;
}

} // namespace kavendra
