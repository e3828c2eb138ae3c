#include "config/LogFile.h"

#include "platform/FileReplacement.h"
#include "platform/Files.h"
#include "platform/Paths.h"

#include <cstdio>

namespace kavendra {

namespace {

constexpr mode_t logPermissions = 0600;

} // namespace

std::string logFilePath(const std::string& logDirectory) {
    return joinedPath(logDirectory, "kavendra.log");
}

std::string formattedLogLine(std::string_view message, std::chrono::sys_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    char timestamp[48];
    std::snprintf(timestamp, sizeof timestamp, "[%04d-%02u-%02uT%02d:%02d:%02dZ] ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
    return std::string(timestamp).append(message) + "\n";
}

Result<void> appendToLog(const std::string& logDirectory, std::string_view message) {
    const std::string line =
        formattedLogLine(message, std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
    if (auto created = createDirectories(logDirectory); !created)
        return created;
    const std::string path = logFilePath(logDirectory);
    return exists(path) ? appendToFile(path, line)
                        : writeFileAtomically(path, line, logPermissions, Flush::no);
}

Result<void> resetLog(const std::string& logDirectory) {
    if (auto created = createDirectories(logDirectory); !created)
        return created;
    return writeFileAtomically(logFilePath(logDirectory), {}, logPermissions, Flush::no);
}

} // namespace kavendra
