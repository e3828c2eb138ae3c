#include "platform/desktop/ParsedURL.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(ParsedURL, encodesWhatAPersonTypes) {
    struct Case {
        const char *text, *scheme;
        const char* encoded;
    };
    for (const Case& c : {
             Case{"HTTPS://Example.COM/A?b#c", "https", "https://example.com/A?b#c"},
             Case{"http://example.com/a b%20c", "http", "http://example.com/a%20b%20c"},
             Case{"http://日本.jp/日", "http", "http://xn--wgv71a.jp/%E6%97%A5"},
             Case{"http://h/%zz\x01\n\"", "http", "http://h/%25zz%01%0A%22"},
             Case{"http://[::1]:80/", "http", "http://[::1]:80/"},
             Case{"https:", "https", "https:"},
             Case{"http:///x", "http", "http:///x"},
             Case{"mailto:a@b.c", "mailto", "mailto:a@b.c"},
             Case{"ls", "", "ls"},
         }) {
        SCOPED_TRACE(c.text);
        const auto url = parseURL(c.text);
        ASSERT_TRUE(url);
        EXPECT_EQ(url->scheme, c.scheme);
        EXPECT_EQ(url->encoded, c.encoded);
    }
}

TEST(ParsedURL, refusesWhatIsNone) {
    using namespace std::string_view_literals;
    for (const std::string_view text : {""sv, "http://a b/"sv, "http://[::1"sv, "http://h:99999/"sv,
                                        "http://h:x/"sv, "http://h/\xFF"sv, "http://h/\0"sv, "http:// h"sv})
        EXPECT_FALSE(parseURL(text)) << text;
}

} // namespace kavendra
