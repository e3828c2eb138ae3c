#include "launch/Params.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(Params, areSplitAtWhiteSpaceOutsideQuotes) {
    using Tokens = std::vector<std::string>;
    using Case = std::pair<const char*, std::optional<Tokens>>;
    for (const auto& [params, expected] : {
             Case{"", Tokens{}},
             Case{" \t\n", Tokens{}},
             Case{R"(a "b c" 'd e')", Tokens{"a", "b c", "d e"}},
             Case{R"("it's" '"x"')", Tokens{"it's", "\"x\""}},
             Case{R"(--name="a b"c)", Tokens{"--name=a bc"}},
             Case{R"("" a '')", Tokens{"a"}},
             Case{R"("  ")", Tokens{"  "}},
             Case{R"(a\ "b\")", Tokens{"a\\", "b\\"}},
             Case{"a\u3000b\u00A0c\u2028d", Tokens{"a", "b", "c", "d"}},
             Case{"\"a\u3000b\" 日本", Tokens{"a\u3000b", "日本"}},
             Case{"\"", std::nullopt},
             Case{"a 'b", std::nullopt},
             Case{"\"a'", std::nullopt},
             Case{"'a\" b \"c", std::nullopt},
         }) {
        const auto tokens = splitParams(params);
        EXPECT_EQ(tokens ? std::optional(*tokens) : std::nullopt, expected) << params;
    }
}

} // namespace kavendra
