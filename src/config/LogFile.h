#pragma once

#include "base/Result.h"

#include <chrono>
#include <string>
#include <string_view>

/// The log of the current run, a plain text file. It is readable by its owner only (mode 0600), because it
/// contains typed text.
namespace kavendra {

std::string logFilePath(const std::string& logDirectory);

/// Returns a log line: "[" + `time` in UTC to the second (ISO 8601) + "] " + message + line feed.
std::string formattedLogLine(std::string_view message, std::chrono::sys_seconds time);

/// Appends one line with the current time. Creates the directory and the file when they do not exist. Fails
/// with the system's reason.
Result<void> appendToLog(const std::string& logDirectory, std::string_view message);

/// Replaces the log by an empty file. Creates the directory when it does not exist. Fails with the system's
/// reason.
Result<void> resetLog(const std::string& logDirectory);

} // namespace kavendra
