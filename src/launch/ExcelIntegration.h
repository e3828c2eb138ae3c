#pragma once

#include "data/LaunchItem.h"
#include "launch/Launcher.h"
#include "platform/MacTools.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace kavendra {

/// How Microsoft Excel opens a workbook, in menu order.
enum class ExcelOpenMode {
    readOnly,          ///< a write-protected copy, in the running Excel
    newSession,        ///< the workbook itself, in a new instance
    newSessionReadOnly ///< a write-protected copy, in a new instance
};
inline constexpr std::array allExcelOpenModes{ExcelOpenMode::readOnly, ExcelOpenMode::newSession,
                                              ExcelOpenMode::newSessionReadOnly};

const char* menuTitle(ExcelOpenMode mode);

/// Returns the typed path if it is a file with the extension of a workbook.
std::optional<std::string> excelWorkbookOf(std::string_view searchText);

/// Returns the existing path in an item's command if it has the extension of a workbook.
std::optional<std::string> excelWorkbookOf(const LaunchItem& item);

/// Returns the AppleScript that opens a workbook read-only in the running Excel (scripting dictionary of
/// Microsoft Excel, "open workbook").
std::string excelScript(std::string_view path);

/// Copies a file to a new directory in the user's temporary directory and removes the write permission from
/// both. Other users cannot reach the copy, whoever may read the file. Returns the path of the copy, which is
/// never removed. Fails with the system's reason.
Result<std::string> makeReadOnlyCopy(const std::string& source);

/// Opens workbooks in Microsoft Excel with the command line tools of macOS, which are to be waited for. The
/// functions may be called on any thread, at the same time.
class ExcelIntegration {
public:
    /// `launcher` must outlive this.
    explicit ExcelIntegration(Launcher& launcher, MacTools tools = macTools())
        : m_launcher(launcher), m_tools(std::move(tools)) {}

    bool canOpenTypedPath(std::string_view searchText) const;
    bool canOpenItem(const LaunchItem& item) const;

    ActionOutcome openTypedPath(std::string_view searchText, ExcelOpenMode mode);
    ActionOutcome openItem(const LaunchItem& item, ExcelOpenMode mode);

private:
    bool isInstalled() const;
    ActionOutcome open(const std::string& workbook, ExcelOpenMode mode, const std::string& description);

    Launcher& m_launcher;
    MacTools m_tools;
};

} // namespace kavendra
