#include "launch/WebAddress.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(WebAddress, isWhatParsesAndIsHTTPOrHTTPS) {
    EXPECT_EQ(webAddressOf("https://example.org"), "https://example.org");
    EXPECT_EQ(webAddressOf("HTTP://Example.org/A b"), "http://example.org/A%20b");
    EXPECT_EQ(webAddressOf("http:example.org"), "http:example.org") << "the browser has to say what is wrong";
    for (const char* text :
         {"", "example.org", "www.example.org/", "/usr/bin/env", "file:///etc/passwd", "mailto:a@b.c",
          "ftp://example.org", "httpx://a", "http//a", "http://a b/", "see https://example.org"})
        EXPECT_FALSE(webAddressOf(text)) << text;
}

} // namespace kavendra
