#pragma once

#include "base/Result.h"

#include <string>

namespace kavendra {

/// The failures of the program's own making. A failure of the system keeps the system's own words instead.
struct LaunchError {
    enum Case {
        invalidURL,
        commandNotFound,
        applicationNotFound,
        failedToOpenInFinder,
        scriptExecutionFailed,
        dataDirectoryNotFound,
        settingsFileInvalid,
        stateFileInvalid,
        missingRequiredColumns,
        missingSupportedWorksheet,
        invalidCSVFormat,
        invalidExcelFormat,
        startupRegistrationFailed,
        unterminatedQuote, ///< carries no payload
    };

    Case kind;
    std::string payload = {}; ///< what failed: a path, a name or another program's words

    /// Returns the text a person reads: the fixed text of the case, then the payload.
    std::string errorDescription() const;

    operator Error() const { return {errorDescription()}; }
};

} // namespace kavendra
