#include "launch/ExcelIntegration.h"

#include "base/UUID.h"
#include "launch/TypedPath.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>

namespace kavendra {

namespace {

constexpr std::array<std::string_view, 7> workbookExtensions{"xls", "xlsx", "xlsm", "xlsb",
                                                             "xla", "xlam", "xlsa"};

bool isReadOnly(ExcelOpenMode mode) {
    return mode != ExcelOpenMode::newSession;
}

/// Returns the path when its extension is one of a workbook.
std::optional<std::string> workbook(std::optional<std::string> path) {
    if (!path ||
        std::ranges::find(workbookExtensions, lowercasedExtension(*path)) == workbookExtensions.end())
        return std::nullopt;
    return path;
}

/// Returns `text` as it stands between the quotes of an AppleScript string.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '\\' || character == '"')
            result += '\\';
        result += character;
    }
    return result;
}

/// Returns the words in which the status line tells the mode.
std::string_view statusWords(ExcelOpenMode mode) {
    switch (mode) {
    case ExcelOpenMode::readOnly:
        return "(read-only)";
    case ExcelOpenMode::newSession:
        return "(new session)";
    case ExcelOpenMode::newSessionReadOnly:
        break;
    }
    return "(new session, read-only)";
}

std::string openedMessage(std::string_view what, ExcelOpenMode mode) {
    return "Opened " + std::string(what) + " in Excel " + std::string(statusWords(mode));
}

constexpr const char* excelNotFound = "Microsoft Excel not found";

} // namespace

std::string_view menuTitle(ExcelOpenMode mode) {
    switch (mode) {
    case ExcelOpenMode::readOnly:
        return "Read-Only";
    case ExcelOpenMode::newSession:
        return "New Session";
    case ExcelOpenMode::newSessionReadOnly:
        break;
    }
    return "New Session + Read-Only";
}

std::optional<std::string> excelWorkbookOf(std::string_view searchText) {
    return workbook(typedPathFileOf(searchText));
}

std::optional<std::string> excelWorkbookOf(const LaunchItem& item) {
    return workbook(existingPathOf(item.command));
}

std::string excelScript(std::string_view path, bool readOnly) {
    return "tell application \"Microsoft Excel\"\n"
           "    activate\n"
           "    open workbook workbook file name \"" +
           escaped(path) + "\" read only " + (readOnly ? "true" : "false") + "\nend tell";
}

Result<std::string> makeReadOnlyCopy(const std::string& source) {
    const std::string temporary = temporaryDirectory();
    if (auto created = createDirectories(temporary); !created)
        return std::unexpected(std::move(created.error()));
    const auto area = privateDirectory(joinedPath(temporary, "kavendra-excel-readonly"));
    if (!area)
        return std::unexpected(area.error());
    const std::string directory = joinedPath(*area, UUID::random().text());
    const std::string copy = joinedPath(directory, lastPathComponent(source));
    Result<void> done = createDirectories(directory);
    if (done)
        done = copyFile(source, copy);
    if (done)
        done = setPermissions(copy, 0444);
    if (done)
        done = setPermissions(directory, 0555);
    if (!done)
        return std::unexpected(std::move(done.error()));
    return copy;
}

ExcelIntegration::ExcelIntegration(Launcher& itemLauncher, std::string excelPath)
    : launcher(itemLauncher), applicationPath(std::move(excelPath)) {}

bool ExcelIntegration::isInstalled() const {
    return exists(applicationPath);
}

bool ExcelIntegration::canOpenTypedPath(std::string_view searchText) const {
    return isInstalled() && excelWorkbookOf(searchText);
}

bool ExcelIntegration::canOpenItem(const LaunchItem& item) const {
    return isInstalled() && excelWorkbookOf(item);
}

ActionOutcome ExcelIntegration::openTypedPath(std::string_view searchText, ExcelOpenMode mode) {
    const auto workbook = excelWorkbookOf(searchText);
    if (!workbook)
        return "No Excel file to open";
    if (!isInstalled())
        return excelNotFound;
    return outcomeOf(open(*workbook, mode), openedMessage("search path", mode));
}

ActionOutcome ExcelIntegration::openItem(const LaunchItem& item, ExcelOpenMode mode) {
    const auto workbook = excelWorkbookOf(item);
    if (!workbook)
        return "No Excel file available in Command";
    if (!isInstalled())
        return excelNotFound;
    return outcomeOf(open(*workbook, mode), openedMessage("Command file", mode));
}

Result<void> ExcelIntegration::open(const std::string& workbook, ExcelOpenMode mode) {
    const Result<std::string> file = isReadOnly(mode) ? makeReadOnlyCopy(workbook) : workbook;
    if (!file)
        return std::unexpected(file.error());
    if (mode == ExcelOpenMode::readOnly)
        return launcher.runProgramAndWait("/usr/bin/osascript", {"-e", excelScript(*file, true)});
    return launcher.runProgramAndWait("/usr/bin/open", {"-n", "-a", applicationPath, *file});
}

} // namespace kavendra
