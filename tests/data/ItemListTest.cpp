#include "data/ItemList.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kavendra {

TEST(ItemList, idsBelongToOneListOnly) {
    // Counting up from any random start must keep version and variant: many lists, so that some overflow.
    for (int round = 0; round < 200; ++round) {
        ItemList list, other;
        for (ItemList* each : {&list, &other})
            each->append({.text = {}, .rows = std::vector<ItemRow>(50), .source = {}});
        std::set<std::string> ids;
        for (std::size_t i = 0; i < list.size(); ++i) {
            const UUID id = list.id(i);
            EXPECT_EQ(list.indexOf(id), i);
            EXPECT_EQ(list[i].id, id);
            EXPECT_FALSE(other.indexOf(id).has_value());
            EXPECT_FALSE(list[i] == other[i]);
            EXPECT_EQ(id.high >> 12 & 0xF, 4U);
            EXPECT_EQ(id.low >> 62, 2U);
            ids.insert(id.text());
        }
        EXPECT_EQ(ids.size(), list.size());
        const auto [high, low] = list.id(0);
        for (const UUID& none : {UUID{}, UUID{high, low ^ (std::uint64_t{1} << 63)}})
            EXPECT_FALSE(list.indexOf(none).has_value());
    }
}

} // namespace kavendra
