#include "config/StateFile.h"

#include "config/JSONEncoding.h"
#include "tests/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(StateFile, holdsColumnWidthsSortedByColumn) {
    for (const char* none : {"{}", R"({"columnWidths": null, "other": 1})"})
        EXPECT_EQ(decodedState(none), LaunchState{}) << none;
    EXPECT_EQ(decodedState(R"({"columnWidths": {"Title": 150.7, "x": -3}})")->columnWidths,
              (ColumnWidths{{"Title", 150.7}, {"x", -3}}));
    EXPECT_EQ(encoded(LaunchState{{{"Title", 150}, {"Command", 300}}}),
              "{\n  \"columnWidths\": {\n    \"Command\": 300.0,\n    \"Title\": 150.0\n  }\n}\n");
}

TEST(StateFile, otherContentIsInvalid) {
    for (const char* bytes :
         {"", "[]", "{", R"({"columnWidths": {"Title": "wide"}})", R"({"columnWidths": [1]})",
          R"({"columnWidths": 1})", R"({"columnWidths": {"Title": 1e999}})"})
        EXPECT_EQ(decodedState(bytes), std::nullopt) << bytes;
    const TemporaryDirectory directory;
    EXPECT_EQ(loadState(directory.path()).error().description,
              "State file is invalid: " + directory.path("kavendra-state.json"));
}

TEST(StateFile, resizeIsRoundedAndStoredOnlyIfItChangesTheWidth) {
    const ColumnWidths widths{{"Title", 150}, {"Edited", 150.7}, {"Unknown", 1}};
    EXPECT_EQ(widthsAfterResize(widths, "Title", 149.6), std::nullopt);
    EXPECT_EQ(widthsAfterResize(widths, "Title", 150.5)->at("Title"), 151) << "halves away from zero";
    EXPECT_EQ(widthsAfterResize(widths, "Edited", 150.7)->at("Edited"), 151);
    EXPECT_EQ(widthsAfterResize(widths, "New", 120.4)->at("New"), 120);
    EXPECT_EQ(widthsAfterResize(widths, "New", 120.4)->at("Unknown"), 1) << "other columns are kept";
}

} // namespace kavendra
