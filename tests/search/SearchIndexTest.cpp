#include "search/SearchIndex.h"

#include "base/Text.h"
#include "tests/support/PlainSearch.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavendra {

namespace {

using Fields = std::array<std::string, requiredColumns.size()>;
using Indexes = std::vector<std::uint32_t>;

/// Returns a list of two blocks with half of the items each. Each block holds equal texts once, as a workbook
/// with shared strings does.
ItemList listOf(const std::vector<Fields>& items) {
    ItemList list;
    const std::size_t half = items.size() / 2;
    for (const auto& part : {std::span(items).first(half), std::span(items).subspan(half)}) {
        ItemBlock block{.text = {}, .rows = {}, .source = "hidden.csv"};
        std::map<std::string_view, TextSpan> spans;
        for (const Fields& fields : part)
            std::ranges::transform(fields, block.rows.emplace_back().begin(), [&](std::string_view text) {
                const TextSpan end{.offset = static_cast<std::uint32_t>(block.text.size()),
                                   .length = static_cast<std::uint32_t>(text.size())};
                const auto [known, isNew] = spans.try_emplace(text, end);
                if (isNew)
                    block.text.append(text);
                return known->second;
            });
        list.append(std::move(block));
    }
    return list;
}

class TextGenerator {
public:
    std::string text(std::size_t maximumPieces, bool ascii) {
        static constexpr std::string_view asciiPieces[] = {
            "a", "B", "ab", "Open", "z9", "-", "/usr/Bin", "AB", "0", "\n", " ", "tool", "[", "@", "`{"};
        static constexpr std::string_view otherPieces[] = {
            "ひら", "ヒラ", "か\u3099", "が", "ガ", "カ\u3099", "e\u0301", "é", "É",    "Σ",      "ΑΣ",
            "σ",    "ς",    "İ",        "K",  "ß",  "Å",        "A\u030A", "ｱ", "漢字", "\u3000", "\u0345"};
        std::string result;
        for (std::size_t pieces = m_random() % (maximumPieces + 1); pieces > 0; --pieces)
            result += ascii || m_random() % 2 == 0 ? asciiPieces[m_random() % std::size(asciiPieces)]
                                                   : otherPieces[m_random() % std::size(otherPieces)];
        return result;
    }

    std::vector<Fields> items() {
        std::vector<Fields> result(m_random() % 40);
        for (Fields& fields : result) {
            const bool ascii = m_random() % 2 == 0;
            for (std::string& field : fields)
                field = m_random() % 2 == 0 ? result.front().front() : trimmed(text(16, ascii));
        }
        return result;
    }

    std::string query() {
        std::string result;
        for (std::size_t words = 1 + m_random() % 3; words > 0; --words)
            result += text(2, m_random() % 2 == 0) + (m_random() % 2 == 0 ? " " : "\u3000");
        return result;
    }

    /// Returns the texts of a search field while queries are typed, with changes at any place.
    std::vector<std::string> typedTexts() {
        std::vector<std::string> result{""};
        const std::string typed = query();
        for (std::size_t at = 0; at < typed.size(); ++at) {
            const bool isCharacterEnd = at + 1 == typed.size() || (typed[at + 1] & 0xC0) != 0x80;
            if (!isCharacterEnd)
                continue;
            result.push_back(typed.substr(0, at + 1));
            if (m_random() % 8 == 0)
                result.push_back(text(1, true) + result.back());
        }
        return result;
    }

private:
    std::mt19937 m_random{11};
};

} // namespace

TEST(SearchIndex, matchesThePlainSearchForRandomQueriesAlsoWhileTheyAreTyped) {
    TextGenerator generator;
    std::size_t found = 0, possible = 0;
    for (int round = 0; round < 400; ++round) {
        const ItemList list = listOf(generator.items());
        const SearchIndex index = *makeSearchIndex(list, 1 + static_cast<std::size_t>(round) % 10);
        const PlainSearch plain(list);
        for (int i = 0; i < 10; ++i) {
            const std::string query = generator.query();
            const Indexes expected = plain.matches(query);
            ASSERT_EQ(index.matches(query), expected) << query;
            found += expected.size();
            possible += list.size();
        }
        std::string text;
        Indexes earlier = index.matches(text);
        for (const std::string& next : generator.typedTexts()) {
            Indexes foundNext = index.matches(next, {.searchText = text, .found = earlier});
            ASSERT_EQ(foundNext, plain.matches(next)) << text << " / " << next;
            text = next;
            earlier = std::move(foundNext);
        }
    }
    // Queries that match all or no items would test little.
    EXPECT_GT(found, possible / 20);
    EXPECT_LT(found, possible * 3 / 4);
}

TEST(SearchIndex, findsItemsThatAnEarlierTextDidNotFind) {
    std::vector<Fields> items(20, Fields{"z", "z", "", ""});
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"caf e", "caf e\u0301", "caf é"},
        {"か", "か\u3099", "が"},
        {"わ", "わ\u3099", "ヷ"},
        {"ΟΔΟΣ", "ΟΔΟΣΑ", "οδοσα"},
        {"\u1112", "\u1112\u1161", "하"},
        {"i", "i\u0307\u0323", "ị\u0307"},
        {"needle thread", "needle", "needle"},
        {"ab", "b", "b"},
        {"ab c", "a bc", "bc a"},
    };
    for (const auto& [earlier, text, item] : cases) {
        items[7][0] = item;
        const SearchIndex index = *makeSearchIndex(listOf(items), 3);
        EXPECT_EQ(index.matches(earlier), Indexes{}) << earlier;
        EXPECT_EQ(index.matches(text, {.searchText = earlier, .found = {}}), Indexes{7}) << text;
    }
}

TEST(SearchIndex, failsForTheFirstFileThatExceedsTheMemory) {
    std::string text;
    for (int i = 0; i < 300; ++i)
        text += "\U0001D160"; // three times as long in normalisation form C
    const TextSpan span{.offset = 0, .length = static_cast<std::uint32_t>(text.size())};
    ItemList list;
    for (const auto& [source, rows] :
         {std::pair("a.csv", 4'000), {"b.csv", 4'000}, {"c.csv", 12'000}, {"d.csv", 40'000}})
        list.append({.text = ByteBuffer(text),
                     .rows = std::vector<ItemRow>(static_cast<std::size_t>(rows), ItemRow{span}),
                     .source = source,
                     .fileSize = 1});
    for (const std::size_t partSize : {700U, 100'000U}) {
        const auto index = makeSearchIndex(list, partSize);
        ASSERT_FALSE(index);
        EXPECT_EQ(index.error().description,
                  "Invalid CSV format: c.csv: too much text for the size of the file");
    }
}

TEST(SearchIndex, findsItemsByTheirWords) {
    const std::vector<Fields> items = {
        {"Open Wiki", "https://wiki.example/", "", "team"},
        {"ひらがな", "run", "--a", "カタカナ"},
        {"ヒラガナ", "run", "--b", ""},
        {"Caf\u00E9", "run", "ΟΔΟΣ", "İstanbul"},
        {"Cafe\u0301", "run", "", "2nd\nline"},
        {"", "", "", ""},
    };
    const SearchIndex index = *makeSearchIndex(listOf(items));
    const Indexes all{0, 1, 2, 3, 4, 5};
    const std::pair<const char*, Indexes> cases[] = {
        {"", all},
        {" \t\u3000\u00A0\n", all},
        {"TEAM  wIKi", {0}},
        {"wiki https://wiki.example/ team open", {0}},
        {"run run", {1, 2, 3, 4}},
        {"wikihttps", {}},
        {"hidden.csv", {}},
        {"ひらがな", {1, 2}},
        {"ヒラガナ", {2}},
        {"かたかな RUN", {1}},
        {"CAFÉ", {3, 4}},
        {"CAFE\u0301", {3, 4}},
        {"cafe", {}},
        {"οδος", {3}},
        {"ΟΔΟΣ", {3}},
        {"i\u0307stanbul", {3}},
        {"line 2ND", {4}},
        {"b", {2, 3}},
        {"2 n d", {4}},
        {"-", {1, 2}},
        {"\xFF", {}},
    };
    for (const auto& [query, found] : cases)
        EXPECT_EQ(index.matches(query), found) << query;
    EXPECT_TRUE(SearchIndex().matches("").empty());
    EXPECT_TRUE(SearchIndex().matches("a").empty());
}

TEST(SearchIndex, findsItemsNearAndFarApart) {
    std::vector<Fields> items(5'000, Fields{"filler", "x", "", ""});
    const Indexes expected{0, 1, 2, 9, 10, 500, 501, 517, 2'499, 2'500, 4'000, 4'998, 4'999};
    for (const std::uint32_t i : expected)
        items[i] = {"filler needle", "x", "needle", ""};
    const SearchIndex index = *makeSearchIndex(listOf(items));
    EXPECT_EQ(index.matches("needle"), expected);
    EXPECT_EQ(index.matches("filler").size(), items.size());
}

} // namespace kavendra
