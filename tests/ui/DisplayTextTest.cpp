#include "ui/DisplayText.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(DisplayText, withVisibleMarksReplacesInvisibleCharacters) {
    const std::vector<std::tuple<const char*, QString, QString>> cases{
        {"ordinary text", "~/a \u05D0\u3042\u00E9.txt", "~/a \u05D0\u3042\u00E9.txt"},
        {"controls", QString("a\tb\r\n\x1B\x7F\u0085z") + QChar(u'\0'),
         "a[TAB]b[CR][LF][U+001B][U+007F][U+0085]z[U+0000]"},
        {"separators", "a\u2028b\u2029", "a[U+2028]b[U+2029]"},
        {"override", "gpj.\u202Excod.exe", "gpj.[U+202E]xcod.exe"},
        {"directional marks", "\u061C\u200E\u200F", "[U+061C][U+200E][U+200F]"},
        {"embeddings", "\u202A\u202B\u202C\u202D", "[U+202A][U+202B][U+202C][U+202D]"},
        {"isolates", "\u2066\u2067\u2068\u2069", "[U+2066][U+2067][U+2068][U+2069]"},
        {"joiners", "\u0646\u200C\u0645\u200D", "\u0646\u200C\u0645\u200D"},
        {"surrogate pair", "\U0001F600", "\U0001F600"},
    };
    for (const auto& [name, text, visible] : cases)
        EXPECT_EQ(withVisibleMarks(text), visible) << name;
}

TEST(DisplayText, originalOfVisibleMapsARangeBack) {
    const QString original = "a\u202E\tb\nc";
    const QString visible = withVisibleMarks(original, LineFeeds::keep);
    ASSERT_EQ(visible, "a[U+202E][TAB]b\nc");
    using Case = std::tuple<qsizetype, qsizetype, QString>;
    for (const auto& [begin, end, part] :
         {Case{0, visible.size(), original}, Case{0, 1, "a"}, Case{1, 9, "\u202E"}, Case{3, 4, "\u202E"},
          Case{8, 10, "\u202E\t"}, Case{14, 17, "b\nc"}})
        EXPECT_EQ(originalOfVisible(original, begin, end), part) << begin << ", " << end;
}

} // namespace kavendra
