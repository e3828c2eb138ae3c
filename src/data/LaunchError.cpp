#include "data/LaunchError.h"

#include <array>
#include <string_view>

namespace kavendra {

namespace {

constexpr std::array<std::string_view, 14> fixedTexts{
    "Invalid URL: ",
    "Command not found: ",
    "Application not found: ",
    "Failed to open in Finder: ",
    "Script execution failed: ",
    "Data directory not found: ",
    "Settings file is invalid: ",
    "State file is invalid: ",
    "CSV is missing required columns: ",
    "Excel workbook has no supported sheet: ",
    "Invalid CSV format: ",
    "Invalid Excel format: ",
    "Failed to update startup registration: ",
    "Params contains an unterminated quote",
};
static_assert(fixedTexts.size() == LaunchError::unterminatedQuote + 1);

} // namespace

std::string LaunchError::errorDescription() const {
    const std::string fixedText(fixedTexts[kind]);
    return kind == unterminatedQuote ? fixedText : fixedText + payload;
}

} // namespace kavendra
