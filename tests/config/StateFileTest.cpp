#include "config/StateFile.h"

#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(StateFile, readsWidthsOrTheirAbsenceAndNothingElse) {
    const TemporaryDirectory directory;
    const auto load = [&directory](const std::string& bytes) {
        directory.write("kavendra-state.json", bytes);
        return loadState(directory.path());
    };
    EXPECT_TRUE(load("{}")->columnWidths.empty());
    EXPECT_TRUE(load(R"({"columnWidths": null, "other": 1})")->columnWidths.empty());
    EXPECT_EQ(load(R"({"columnWidths": {"Title": 150.7, "x": -3}})")->columnWidths,
              (ColumnWidths{{"Title", 150.7}, {"x", -3}}));
    for (const char* bytes :
         {"", "[]", "{", R"({"columnWidths": {"Title": "wide"}})", R"({"columnWidths": [1]})",
          R"({"columnWidths": 1})", R"({"columnWidths": {"Title": 1e999}})"}) {
        const auto state = load(bytes);
        ASSERT_FALSE(state) << bytes;
        EXPECT_EQ(state.error().description,
                  "State file is invalid: " + directory.path("kavendra-state.json"));
    }
}

TEST(StateFile, writesWidthsSortedByColumn) {
    const TemporaryDirectory directory;
    ASSERT_TRUE(writeState(directory.path(), {{{"Title", 150}, {"Command", 300}}}));
    EXPECT_EQ(directory.read("kavendra-state.json"),
              "{\n  \"columnWidths\": {\n    \"Command\": 300.0,\n    \"Title\": 150.0\n  }\n}\n");
}

TEST(StateFile, aResizeIsRoundedAndStoredOnlyWhenItChangesSomething) {
    const ColumnWidths widths{{"Title", 150}, {"Edited", 150.7}, {"Unknown", 1}};
    EXPECT_EQ(widthsAfterResize(widths, "Title", 149.6), std::nullopt);
    EXPECT_EQ(widthsAfterResize(widths, "Title", 150.5)->at("Title"), 151) << "halves away from zero";
    EXPECT_EQ(widthsAfterResize(widths, "Edited", 150.7)->at("Edited"), 151);
    EXPECT_EQ(widthsAfterResize(widths, "New", 120.4)->at("New"), 120);
    EXPECT_EQ(widthsAfterResize(widths, "New", 120.4)->at("Unknown"), 1) << "what is not shown stays";
}

} // namespace kavendra
