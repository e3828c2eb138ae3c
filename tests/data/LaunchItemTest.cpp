#include "data/LaunchItem.h"

#include "data/LaunchError.h"

#include <gtest/gtest.h>

namespace kavendra {

TEST(LaunchItem, GivesColumnsByTheirExactNames) {
    const LaunchItem item{.id = UUID::random(),
                          .title = "t",
                          .command = "c",
                          .params = "p",
                          .keywords = "k",
                          .source = "s.csv"};
    std::string values;
    for (const std::string_view column : {"Title", "Command", "Params", "Keywords", "Source"})
        values.append(columnValue(item, column)).append(" ");
    EXPECT_EQ(values, "t c p k s.csv ");
    for (const std::string_view unknown : {"title", " Title", "Title ", "id", ""})
        EXPECT_EQ(columnValue(item, unknown), "") << unknown;
}

TEST(LaunchError, DescribesEachCaseInItsOwnWords) {
    const auto text = [](LaunchError::Case kind) { return LaunchError{kind, "~/x y"}.errorDescription(); };
    EXPECT_EQ(text(LaunchError::invalidURL), "Invalid URL: ~/x y");
    EXPECT_EQ(text(LaunchError::commandNotFound), "Command not found: ~/x y");
    EXPECT_EQ(text(LaunchError::applicationNotFound), "Application not found: ~/x y");
    EXPECT_EQ(text(LaunchError::failedToOpenInFinder), "Failed to open in Finder: ~/x y");
    EXPECT_EQ(text(LaunchError::scriptExecutionFailed), "Script execution failed: ~/x y");
    EXPECT_EQ(text(LaunchError::dataDirectoryNotFound), "Data directory not found: ~/x y");
    EXPECT_EQ(text(LaunchError::settingsFileInvalid), "Settings file is invalid: ~/x y");
    EXPECT_EQ(text(LaunchError::stateFileInvalid), "State file is invalid: ~/x y");
    EXPECT_EQ(text(LaunchError::missingRequiredColumns), "CSV is missing required columns: ~/x y");
    EXPECT_EQ(text(LaunchError::missingSupportedWorksheet), "Excel workbook has no supported sheet: ~/x y");
    EXPECT_EQ(text(LaunchError::invalidCSVFormat), "Invalid CSV format: ~/x y");
    EXPECT_EQ(text(LaunchError::invalidExcelFormat), "Invalid Excel format: ~/x y");
    EXPECT_EQ(text(LaunchError::startupRegistrationFailed), "Failed to update startup registration: ~/x y");
    EXPECT_EQ(text(LaunchError::unterminatedQuote), "Params contains an unterminated quote");
    EXPECT_EQ(LaunchError{LaunchError::commandNotFound}.errorDescription(), "Command not found: ");
}

} // namespace kavendra
