#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace trellivar {

/// The engine's diagnostics: one text file for all users of a machine's engine, which grows until
/// someone removes it. It is opened anew for every line, so that others may read it at any time.
inline constexpr std::string_view logPath = "/tmp/trellivar.log";

/// Appends one line to the log. Never fails, never waits, never follows a symbolic link: a line
/// that cannot be written is lost. Any thread.
void debugLog(std::string_view message) noexcept;

/// The same to another file, at a given time.
void appendLogLine(const std::string& path, std::chrono::system_clock::time_point time,
                   std::string_view message) noexcept;

/// "[2026-01-31 09:05:07 +0000] message" and a newline. Line ends within the message become blanks,
/// since a line is what readers count on.
std::string logLine(std::chrono::system_clock::time_point time, std::string_view message);

} // namespace trellivar
