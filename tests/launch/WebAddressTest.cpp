#include "launch/WebAddress.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(WebAddress, isUnchangedExceptForRequiredEncoding) {
    using namespace std::string_view_literals;
    const std::string longName(2000, 'n');
    std::string longUnicodeName, encodedName;
    for (int i = 0; i < 1000; ++i) {
        longUnicodeName += "日";
        encodedName += "%E6%97%A5";
    }
    using Case = std::pair<std::string_view, std::string_view>;
    for (const auto& [text, url] : {
             // Unchanged, also where a browser reports an error.
             Case{"HTTPS://Example.COM:0443/A/../%7eb?c=%41&d[]='(1)'#e#f",
                  "HTTPS://Example.COM:0443/A/../%7eb?c=%41&d[]='(1)'#e#f"},
             Case{"http://h:99999/", "http://h:99999/"},
             Case{"http://a,b", "http://a,b"},
             Case{"http://foo-.bar/", "http://foo-.bar/"},
             Case{"http://_a.b..c/", "http://_a.b..c/"},
             Case{"http://1.2.3", "http://1.2.3"},
             Case{"http://h:/", "http://h:/"},
             Case{"http://user:p%40ss@h:1?x", "http://user:p%40ss@h:1?x"},
             Case{"http://[::1]:80/", "http://[::1]:80/"},
             Case{"http://[fe80::1%25eth0]", "http://[fe80::1%25eth0]"},
             Case{"https:", "https:"},
             Case{"http:example.org", "http:example.org"},
             Case{"http:///x", "http:///x"},
             Case{"http://", "http://"},
             // Bytes that a URL must not contain.
             Case{"http://h/a b%20c", "http://h/a%20b%20c"},
             Case{"http://h/%41%zz%4%", "http://h/%41%25zz%254%25"},
             Case{"http://h/%41"sv.substr(0, 11), "http://h/%254"},
             Case{"http://h/\x01\n\x7F\0"sv, "http://h/%01%0A%7F%00"},
             Case{"http://h/\"<>\\^`{|}", "http://h/%22%3C%3E%5C%5E%60%7B%7C%7D"},
             Case{"http://h?日 #本", "http://h?%E6%97%A5%20#%E6%9C%AC"},
             Case{"http://a b@h%zz/", "http://a%20b@h%25zz/"},
             Case{"http:日", "http:%E6%97%A5"},
             // Hosts that are not ASCII: the ASCII form that browsers look up, also for full-width letters.
             Case{"http://日本.jp:8080/", "http://xn--wgv71a.jp:8080/"},
             Case{"http://u@Bücher.Example", "http://u@xn--bcher-kva.example"},
             Case{"http://ｅｘａｍｐｌｅ。org/", "http://example.org/"},
             Case{"http://-é/", "http://-%C3%A9/"},
         }) {
        EXPECT_EQ(webAddressOf(text), url) << text;
        EXPECT_EQ(webAddressOf(url), url) << text << ": a URL is unchanged";
    }
    EXPECT_EQ(webAddressOf("http://" + longName + "/"), "http://" + longName + "/");
    EXPECT_EQ(webAddressOf("http://" + longUnicodeName + "/"), "http://" + encodedName + "/");
}

TEST(WebAddress, otherTextIsNoWebAddress) {
    using namespace std::string_view_literals;
    for (const std::string_view scheme :
         {"http"sv, "mailto:"sv, "file://"sv, "ftp://"sv, "httpx://"sv, "http//"sv, ""sv, ":"sv, "://"sv,
          "//"sv, "http s://"sv, " http://"sv, "a http://"sv, "http\0://"sv, "\xE2\x84\xAAttp://"sv})
        for (const char* rest : {"", "h"})
            EXPECT_EQ(webAddressOf(std::string(scheme) + rest), std::nullopt) << scheme;
    for (const char* rest : {"a b",  " h",   "\n",       "h:x",  "h:-1",   "h:1 ",   "h:1:2",   "h:١",
                             "[::1", "::1]", "::1",      "[]",   "[::1]x", "x[::1]", "[[::1]]", "[::é]",
                             "a\\b", "<h>",  "a\u3000b", "a／b", "a＠b",   "-é b",   "h/\xFF"})
        for (const char* end : {"", "/"})
            EXPECT_EQ(webAddressOf(std::string("http://") + rest + end), std::nullopt) << rest;
}

} // namespace kavendra
