#include "files/durable_file.h"
#include "files/file_descriptor.h"
#include "files/temporary_name.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <random>
#include <thread>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Clock = std::chrono::steady_clock;
using Names = std::vector<std::string>;
using std::chrono::microseconds;

/// Of different letters and lengths, so that no mixture and no part of one passes for the other.
const std::array<std::string, 2> contents = {filled('a', 300'000), filled('b', 200'001)};

/// Lets a child say that it has begun.
class StartSignal {
public:
  StartSignal() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    reader_ = FileDescriptor(ends[0]);
    writer_ = FileDescriptor(ends[1]);
  }

  void give() const { EXPECT_EQ(::write(writer_.get(), "!", 1), 1); }

  /// False if the child ended without a signal.
  bool wait() {
    writer_ = FileDescriptor(-1);
    char signal = 0;
    return ::read(reader_.get(), &signal, 1) == 1;
  }

private:
  FileDescriptor reader_{-1};
  FileDescriptor writer_{-1};
};

[[noreturn]] void saveForEver(const fs::path& path, std::size_t first, const StartSignal& start) {
  start.give();
  for (std::size_t index = first;; ++index)
    replaceFile(path, contents[index % 2]);
}

/// Kills shall fall anywhere in the first few saves, however fast the disk is.
microseconds longestLife(const fs::path& path) {
  constexpr int saves = 5;
  const auto begin = Clock::now();
  for (int save = 0; save < saves; ++save)
    replaceFile(path, contents[0]);
  const auto each = std::chrono::duration_cast<microseconds>(Clock::now() - begin) / saves;
  return std::max(3 * each, microseconds(1));
}

void spin(microseconds duration) {
  const auto end = Clock::now() + duration;
  while (Clock::now() < end)
    std::this_thread::yield();
}

/// What the killed children left, counted in rounds.
struct Findings {
  std::array<int, 2> contentSeen{};
  int withoutLeftOver = 0;
  int withLeftOver = 0;
  int saves = 0; // after a kill with left-over
  int otherContent = 0;
  int otherFiles = 0;
};

/// Names of the left-overs of one process; counts what is neither that nor the file.
Names leftOversOf(pid_t process, const fs::path& path, Findings& findings) {
  Names leftOvers;
  for (const std::string& name : namesIn(path.parent_path())) {
    if (name == path.filename()) continue;
    const auto temporary = TemporaryName::parse(name, path.filename().string());
    if (!temporary) ++findings.otherFiles;
    if (temporary && temporary->process == process) leftOvers.push_back(name);
  }
  return leftOvers;
}

void inspectContent(const fs::path& path, Findings& findings) {
  const std::string content = contentOf(path);
  const auto which = std::find(contents.begin(), contents.end(), content);
  if (which == contents.end()) {
    ++findings.otherContent;
  } else {
    ++findings.contentSeen[static_cast<std::size_t>(which - contents.begin())];
  }
}

/// Runs a child for that long. Its left-overs.
Names saveAndKill(const fs::path& path, std::size_t first, microseconds life, Findings& findings) {
  StartSignal start;
  ChildProcess child([&]() -> int { saveForEver(path, first, start); });
  const pid_t process = child.id();
  EXPECT_TRUE(start.wait());
  spin(life);
  EXPECT_EQ(child.kill(), -SIGKILL);
  return leftOversOf(process, path, findings);
}

/// Saves in this process; all left-overs, of whichever round, must be gone then.
void expectSaveToTidyUp(const fs::path& path, const std::string& content) {
  replaceFile(path, content);
  EXPECT_EQ(namesIn(path.parent_path()), Names{path.filename()});
  EXPECT_TRUE(contentOf(path) == content);
}

void expectWholeContents(const Findings& findings) {
  EXPECT_EQ(findings.otherContent, 0);
  EXPECT_EQ(findings.otherFiles, 0);
}

/// Otherwise the kills came too early or too late to prove anything.
void expectVariedMoments(const Findings& findings) {
  EXPECT_GT(findings.withLeftOver, 0);
  EXPECT_GT(findings.withoutLeftOver, 0);
  EXPECT_GT(findings.saves, 0);
  EXPECT_GT(findings.contentSeen[0], 0);
  EXPECT_GT(findings.contentSeen[1], 0);
}

void killManySaves(const fs::path& path, std::size_t rounds) {
  std::mt19937 random(20'240'229);
  std::uniform_int_distribution<microseconds::rep> life(0, longestLife(path).count());

  Findings findings;
  for (std::size_t round = 0; round < rounds; ++round) {
    const Names leftOvers = saveAndKill(path, round, microseconds(life(random)), findings);
    EXPECT_LE(leftOvers.size(), 1u);
    ++(leftOvers.empty() ? findings.withoutLeftOver : findings.withLeftOver);
    inspectContent(path, findings);
    // The other left-overs are for the child of the next round.
    if (leftOvers.empty() || round % 4 != 0) continue;
    expectSaveToTidyUp(path, contents[round / 4 % 2]);
    ++findings.saves;
  }
  expectWholeContents(findings);
  expectVariedMoments(findings);
}

TEST(KilledSave, leavesOneWholeContentAndOnlyFilesThatTheNextSaveRemoves) {
  const TemporaryFolder folder;
  killManySaves(folder / "file", 100);
}

// On a disk nearly every kill hits the flush. In memory, which needs none, all steps get their
// share.
TEST(KilledSave, leavesOneWholeContentWhicheverStepTheKillHits) {
  const fs::path memory = "/dev/shm";
  const TemporaryFolder folder(fs::is_directory(memory) ? memory : fs::temp_directory_path());
  killManySaves(folder / "file", 200);
}

} // namespace
} // namespace trellivar
