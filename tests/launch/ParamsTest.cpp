#include "launch/Params.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(Params, splitsAtWhiteSpaceOutsideQuotes) {
    struct Case {
        const char* params;
        std::vector<std::string> tokens;
    };
    for (const Case& c : {
             Case{"", {}},
             Case{" \t\n", {}},
             Case{R"(a "b c" 'd e')", {"a", "b c", "d e"}},
             Case{R"("it's" '"x"')", {"it's", "\"x\""}},
             Case{R"(--name="a b"c)", {"--name=a bc"}},
             Case{R"("" a '')", {"a"}},
             Case{R"("  ")", {"  "}},
             Case{R"(a\ "b\")", {"a\\", "b\\"}},
             Case{"a\u3000b\u00A0c\u2028d", {"a", "b", "c", "d"}},
             Case{"\"a\u3000b\" 日本", {"a\u3000b", "日本"}},
         }) {
        SCOPED_TRACE(c.params);
        const auto tokens = splitParams(c.params);
        ASSERT_TRUE(tokens);
        EXPECT_EQ(*tokens, c.tokens);
    }
}

TEST(Params, refusesAnOpenQuote) {
    for (const char* params : {"\"", "a 'b", "\"a'", "'a\" b \"c"}) {
        const auto tokens = splitParams(params);
        ASSERT_FALSE(tokens) << params;
        EXPECT_EQ(tokens.error().description, "Params contains an unterminated quote");
    }
}

} // namespace kavendra
