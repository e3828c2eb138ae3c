#include "base/Text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kavendra {

TEST(Text, trimsAndSplitsAtEveryUnicodeWhiteSpace) {
    EXPECT_EQ(trimmed(" \t\r\n\u00A0\u3000a b\u2028\u0085 "), "a b");
    EXPECT_EQ(trimmed("\u3000\u00A0 "), "");
    EXPECT_EQ(trimmed("\u200B"), "\u200B") << "the zero width space is not white space";
    EXPECT_EQ(trimmed("\xFF x\x80"), "\xFF x\x80") << "broken bytes are kept";
    EXPECT_EQ(splitWords("  one\u3000two\u00A0\nthree"),
              (std::vector<std::string_view>{"one", "two", "three"}));
    EXPECT_TRUE(splitWords("\u3000 \t").empty());
    EXPECT_TRUE(containsWhiteSpace("a\u3000b"));
    EXPECT_FALSE(containsWhiteSpace("ab\xE3\x80"));
}

TEST(Text, reordersRunsOfUpToThirtyCombiningMarks) {
    std::string marks;
    for (int count = 1; count < 30; ++count)
        marks += "\u0301";
    EXPECT_EQ(normalized("e" + marks + "\u0327"), "ȩ" + marks);
    EXPECT_EQ(normalized("e" + marks + "\u0301\u0327"), "é" + marks + "\u0327");
}

TEST(Text, normalizesLongRunsOfCombiningMarksInLinearTime) {
    std::string marks = "e";
    for (int i = 0; i < 500'000; ++i)
        marks += "\u0301\u0327";
    const std::string result = normalized(marks + " e\u0301");
    EXPECT_TRUE(result.starts_with("ȩ\u0327"));
    EXPECT_TRUE(result.ends_with(" é"));
}

TEST(Text, sortsNamesByLocaleAndThenByBytes) {
    std::vector<std::string> names{"c.csv", "B.xlsx", "a.csv", "A.csv", "é.csv", "f.csv"};
    std::ranges::sort(names, localizedLess);
    EXPECT_EQ(names, (std::vector<std::string>{"A.csv", "a.csv", "B.xlsx", "c.csv", "é.csv", "f.csv"}));
}

} // namespace kavendra
