#include "data/ItemList.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace kavendra {

namespace {

/// A block of rows whose titles are single letters.
ItemBlock block(std::string_view titles, std::string source) {
    ItemBlock made{.text = ByteBuffer(titles), .rows = {}, .source = std::move(source)};
    for (std::uint32_t i = 0; i < titles.size(); ++i)
        made.rows.push_back({TextSpan{.offset = i, .length = 1}});
    return made;
}

} // namespace

TEST(ItemList, findsItemsThroughAllBlocksInOrder) {
    ItemList list;
    EXPECT_TRUE(list.empty());
    list.append(block("", "empty"));
    list.append(block("ab", "first"));
    list.append(block("", "empty"));
    list.append(block("cde", "second"));
    list.append(block("", "empty"));

    std::string titles;
    for (std::size_t i = 0; i < list.size(); ++i) {
        titles += list.value(i, ItemColumn::title);
        EXPECT_EQ(list.value(i, ItemColumn::source), i < 2 ? "first" : "second");
        EXPECT_EQ(list[i].title, list.value(i, ItemColumn::title));
        EXPECT_EQ(list[i].source, list.value(i, ItemColumn::source));
        EXPECT_EQ(list[i].command, "");
    }
    EXPECT_EQ(titles, "abcde");
}

TEST(ItemList, idsBelongToOneListOnly) {
    // Counting up from any random start must keep version and variant: many lists, so that some overflow.
    for (int round = 0; round < 200; ++round) {
        ItemList list, other;
        list.append(block(std::string(50, 'a'), "source"));
        other.append(block(std::string(50, 'a'), "source"));
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
