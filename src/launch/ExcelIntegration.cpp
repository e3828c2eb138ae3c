#include "launch/ExcelIntegration.h"

#include "base/TranslatableText.h"
#include "base/UUID.h"
#include "launch/TypedPath.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <algorithm>

namespace kavendra {

namespace {

constexpr std::array<std::string_view, 7> workbookExtensions{"xls", "xlsx", "xlsm", "xlsb",
                                                             "xla", "xlam", "xlsa"};

/// Returns the path if it has the extension of a workbook.
std::optional<std::string> workbook(std::optional<std::string> path) {
    if (!path ||
        std::ranges::find(workbookExtensions, lowercasedExtension(*path)) == workbookExtensions.end())
        return std::nullopt;
    return path;
}

/// Returns `text` escaped for an AppleScript string.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (character == '\\' || character == '"')
            result += '\\';
        result += character;
    }
    return result;
}

} // namespace

const char* menuTitle(ExcelOpenMode mode) {
    constexpr std::array titles{KAVENDRA_TEXT("Read-Only"), KAVENDRA_TEXT("New Session"),
                                KAVENDRA_TEXT("New Session + Read-Only")};
    return titles[static_cast<std::size_t>(mode)];
}

std::optional<std::string> excelWorkbookOf(std::string_view searchText) {
    return workbook(typedPathFileOf(searchText));
}

std::optional<std::string> excelWorkbookOf(const LaunchItem& item) {
    return workbook(existingPathOf(item.command));
}

std::string excelScript(std::string_view path) {
    return "tell application \"Microsoft Excel\"\n"
           "    activate\n"
           "    open workbook workbook file name \"" +
           escaped(path) + "\" read only true\nend tell";
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

bool ExcelIntegration::isInstalled() const {
    return exists(m_tools.excel);
}

bool ExcelIntegration::canOpenTypedPath(std::string_view searchText) const {
    return isInstalled() && excelWorkbookOf(searchText);
}

bool ExcelIntegration::canOpenItem(const LaunchItem& item) const {
    return isInstalled() && excelWorkbookOf(item);
}

ActionOutcome ExcelIntegration::openTypedPath(std::string_view searchText, ExcelOpenMode mode) {
    const auto workbook = excelWorkbookOf(searchText);
    return workbook ? open(*workbook, mode, "search path") : "No Excel file to open";
}

ActionOutcome ExcelIntegration::openItem(const LaunchItem& item, ExcelOpenMode mode) {
    const auto workbook = excelWorkbookOf(item);
    return workbook ? open(*workbook, mode, "Command file") : "No Excel file available in Command";
}

/// `description` is the workbook's name in the status message.
ActionOutcome ExcelIntegration::open(const std::string& workbook, ExcelOpenMode mode,
                                     const std::string& description) {
    if (!isInstalled())
        return "Microsoft Excel not found";
    const Result<std::string> file =
        mode == ExcelOpenMode::newSession ? workbook : makeReadOnlyCopy(workbook);
    if (!file)
        return std::unexpected(file.error());
    constexpr std::array modes{"read-only", "new session", "new session, read-only"};
    std::string message =
        "Opened " + description + " in Excel (" + modes[static_cast<std::size_t>(mode)] + ")";
    if (mode == ExcelOpenMode::readOnly)
        return m_launcher.runProgram(m_tools.osascript, {"-e", excelScript(*file)}, std::move(message));
    return m_launcher.runProgram(m_tools.open, {"-n", "-a", m_tools.excel, *file}, std::move(message));
}

} // namespace kavendra
