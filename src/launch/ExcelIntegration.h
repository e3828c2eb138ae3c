#pragma once

#include "data/LaunchItem.h"
#include "launch/ActionOutcome.h"
#include "launch/Launcher.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// Opening workbooks in Microsoft Excel, which is driven by the tools of macOS.
namespace kavendra {

/// How a workbook is opened, in the order in which the ways are offered.
enum class ExcelOpenMode {
    readOnly,          ///< a write-protected copy, in the Excel that is running
    newSession,        ///< the workbook itself, in a new instance
    newSessionReadOnly ///< a write-protected copy, in a new instance
};
inline constexpr std::array allExcelOpenModes{ExcelOpenMode::readOnly, ExcelOpenMode::newSession,
                                              ExcelOpenMode::newSessionReadOnly};

std::string_view menuTitle(ExcelOpenMode mode);

/// Returns the existing workbook, by its extension, that the text of the search field names.
std::optional<std::string> excelWorkbookOf(std::string_view searchText);

/// Returns the existing workbook, by its extension, that an item's command names.
std::optional<std::string> excelWorkbookOf(const LaunchItem& item);

/// Returns the AppleScript that opens a workbook in the Excel that is running (the dictionary of Microsoft
/// Excel, "open workbook").
std::string excelScript(std::string_view path, bool readOnly);

/// Copies a file to a new directory of its own in the user's temporary directory, and takes the permission to
/// write away from both. Only this user can reach it, whoever may read the file.
/// Returns the path of the copy, which is never removed. Fails with the system's reason.
Result<std::string> makeReadOnlyCopy(const std::string& source);

class ExcelIntegration {
public:
    static constexpr const char* defaultApplicationPath = "/Applications/Microsoft Excel.app";

    /// `itemLauncher` must outlive this.
    explicit ExcelIntegration(Launcher& itemLauncher, std::string excelPath = defaultApplicationPath);

    bool canOpenTypedPath(std::string_view searchText) const;
    bool canOpenItem(const LaunchItem& item) const;

    ActionOutcome openTypedPath(std::string_view searchText, ExcelOpenMode mode);
    ActionOutcome openItem(const LaunchItem& item, ExcelOpenMode mode);

private:
    bool isInstalled() const;
    Result<void> open(const std::string& workbook, ExcelOpenMode mode);

    Launcher& launcher;
    std::string applicationPath;
};

} // namespace kavendra
