#include "engine/log.h"
#include "tests/support/log_since.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <map>
#include <sstream>
#include <thread>
#include <vector>

namespace trellivar {
namespace {

using namespace std::chrono;

system_clock::time_point at(year_month_day date, milliseconds ofTheDay) {
  return sys_days(date) + ofTheDay;
}

const auto morning = at(2026y / January / 31, 9h + 5min + 7s);

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(LogLine, carriesTheTimeInUtcWithLeadingZeros) {
  EXPECT_EQ(logLine(morning, "message"), "[2026-01-31 09:05:07 +0000] message\n");
  EXPECT_EQ(logLine(at(2024y / February / 29, 23h + 59min + 59s), ""),
            "[2024-02-29 23:59:59 +0000] \n");
  EXPECT_EQ(logLine(at(2026y / December / 1, 0s), "x"), "[2026-12-01 00:00:00 +0000] x\n");
}

TEST(LogLine, leavesFractionsOfASecondAway) {
  EXPECT_EQ(logLine(morning + 999ms, "m"), "[2026-01-31 09:05:07 +0000] m\n");
  EXPECT_EQ(logLine(at(1970y / January / 1, -1ms), "before all counting"),
            "[1969-12-31 23:59:59 +0000] before all counting\n");
}

TEST(LogLine, isOneLineWhateverTheMessage) {
  EXPECT_EQ(logLine(morning, "a\nb\r\nc\n"), "[2026-01-31 09:05:07 +0000] a b  c \n");
}

TEST(LogLine, keepsEveryOtherByte) {
  const std::string message = std::string("é → \t%s%n", 12) + '\0' + "\xFF";
  EXPECT_EQ(logLine(morning, message), "[2026-01-31 09:05:07 +0000] " + message + "\n");
}

TEST(Log, theFirstLineCreatesTheFileAndLaterOnesFollow) {
  const TemporaryFolder folder;
  const std::string path = folder / "log";
  appendLogLine(path, morning, "first");
  EXPECT_EQ(contentOf(path), "[2026-01-31 09:05:07 +0000] first\n");
  appendLogLine(path, morning - 1s, "second");
  EXPECT_EQ(contentOf(path), "[2026-01-31 09:05:07 +0000] first\n"
                             "[2026-01-31 09:05:06 +0000] second\n");
}

TEST(Log, aRemovedFileIsCreatedAnew) {
  const TemporaryFolder folder;
  const std::string path = folder / "log";
  appendLogLine(path, morning, "first");
  std::filesystem::remove(path);
  appendLogLine(path, morning, "second");
  EXPECT_EQ(contentOf(path), "[2026-01-31 09:05:07 +0000] second\n");
}

TEST(Log, aLineThatCannotBeWrittenIsLostSilently) {
  const TemporaryFolder folder;
  appendLogLine(folder / "none" / "log", morning, "lost");
  appendLogLine(folder.path(), morning, "lost");
  std::filesystem::create_symlink("elsewhere", folder / "link");
  appendLogLine(folder / "link", morning, "lost");
  EXPECT_FALSE(std::filesystem::exists(folder / "elsewhere"));
}

TEST(Log, linesOfSeveralThreadsStayWhole) {
  const TemporaryFolder folder;
  const std::string path = folder / "log";
  constexpr int threadCount = 4;
  constexpr int lineCount = 200;
  std::vector<std::thread> threads;
  for (int number = 0; number < threadCount; ++number) {
    threads.emplace_back([&path, number] {
      for (int i = 0; i < lineCount; ++i)
        appendLogLine(path, morning, "thread " + std::to_string(number));
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  std::map<std::string, int> lines;
  std::istringstream content(contentOf(path));
  for (std::string line; std::getline(content, line);)
    ++lines[line];
  std::map<std::string, int> expected;
  for (int number = 0; number < threadCount; ++number)
    expected["[2026-01-31 09:05:07 +0000] thread " + std::to_string(number)] = lineCount;
  EXPECT_EQ(lines, expected);
}

TEST(Log, debugLogAppendsToTheLogOfTheMachineAtThePresentTime) {
  EXPECT_EQ(logPath, "/tmp/trellivar.log");
  const std::string message = "log test " + std::to_string(::getpid()) + " " +
                              std::to_string(steady_clock::now().time_since_epoch().count());
  const LogSince log;
  const auto before = floor<seconds>(system_clock::now());
  debugLog(message);
  const auto after = system_clock::now();
  const std::string content = log.text();
  bool isThere = false;
  for (auto second = before; second <= after; second += 1s)
    isThere = isThere || content.find(logLine(second, message)) != std::string::npos;
  EXPECT_TRUE(isThere);
}

} // namespace
} // namespace trellivar
