#pragma once

#include "base/Result.h"

#include <chrono>
#include <string>
#include <string_view>

/// The log of the current run, a plain text file that is found again by its directory at every call. Only its
/// owner may read it, because it holds what was typed.
namespace kavendra {

std::string logFilePath(const std::string& logDirectory);

/// Returns a log line: "[" + `time` in UTC to the second (ISO 8601) + "] " + message + line feed.
std::string formattedLogLine(std::string_view message, std::chrono::sys_seconds time);

/// Appends one line with the current time, creating the directory and the file when they are missing.
/// Fails with the system's reason.
Result<void> appendToLog(const std::string& logDirectory, std::string_view message);

/// Puts a new, empty file in the log's place, creating the directory when it is missing. Fails with the
/// system's reason.
Result<void> resetLog(const std::string& logDirectory);

} // namespace kavendra
