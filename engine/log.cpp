#include "engine/log.h"

#include "files/append_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>

namespace trellivar {

namespace {

std::string utc(std::chrono::system_clock::time_point time) {
  namespace chrono = std::chrono;
  const auto day = chrono::floor<chrono::days>(time);
  const chrono::year_month_day date(day);
  const chrono::hh_mm_ss clock(chrono::floor<chrono::seconds>(time - day));
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d +0000",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

} // namespace

std::string logLine(std::chrono::system_clock::time_point time, std::string_view message) {
  std::string line = "[" + utc(time) + "] ";
  std::ranges::replace_copy_if(
      message, std::back_inserter(line), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return line + '\n';
}

void appendLogLine(const std::string& path, std::chrono::system_clock::time_point time,
                   std::string_view message) noexcept {
  try {
    appendToFile(path, logLine(time, message));
  } catch (
      const std::exception&) { // NOLINT(bugprone-empty-catch): losing a line is all that may happen
  }
}

void debugLog(std::string_view message) noexcept {
  try {
    appendLogLine(std::string(logPath), std::chrono::system_clock::now(), message);
  } catch (const std::exception&) { // NOLINT(bugprone-empty-catch)
  }
}

} // namespace trellivar
