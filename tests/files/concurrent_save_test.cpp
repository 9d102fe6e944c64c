#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <exception>
#include <thread>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
/// It does not see openat, and takes a descriptor that came from it for the one before of the same
/// number.
extern "C" const char* __tsan_default_suppressions();
const char* __tsan_default_suppressions() { return "race:^closedir$\nrace:^close$\n"; }
#endif
#endif

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

constexpr std::size_t size = 70'000;

/// Each letter a content; whole if all its bytes are there and the same.
bool isWhole(const std::string& content) {
  return content.size() == size && content.find_first_not_of(content[0]) == std::string::npos;
}

/// Saves `rounds` times in each of `count` threads, each with a letter of its own. The number of
/// saves that failed.
int saveInThreads(const fs::path& path, char firstLetter, int count, int rounds) {
  std::atomic<int> failures{0};
  std::vector<std::thread> threads;
  for (int index = 0; index < count; ++index) {
    const std::string content = filled(static_cast<char>(firstLetter + index), size);
    threads.emplace_back([&failures, path, content, rounds] {
      for (int round = 0; round < rounds; ++round) {
        if (failureOf([&] { replaceFile(path, content); })) ++failures;
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  return failures;
}

/// Reads again and again in a thread, until asked whether everything seen was whole.
class Onlooker {
public:
  explicit Onlooker(const fs::path& path) : thread_([this, path] { look(path); }) {}
  Onlooker(const Onlooker&) = delete;
  Onlooker& operator=(const Onlooker&) = delete;
  ~Onlooker() { stop(); }

  int partsSeen() {
    stop();
    return partsSeen_;
  }

private:
  void look(const fs::path& path) {
    do {
      const auto content = readFile(path);
      if (!content || !isWhole(*content)) ++partsSeen_;
    } while (!stopping_);
  }
  void stop() {
    stopping_ = true;
    if (thread_.joinable()) thread_.join();
  }

  std::atomic<bool> stopping_{false};
  std::atomic<int> partsSeen_{0};
  std::thread thread_;
};

TEST(ConcurrentSave, ofSeveralThreadsNeverFailsAndLeavesOneWholeContent) {
  const TemporaryFolder folder;
  put(folder / "file", filled('z', size));
  Onlooker onlooker(folder / "file");

  EXPECT_EQ(saveInThreads(folder / "file", 'a', 8, 25), 0);
  EXPECT_EQ(onlooker.partsSeen(), 0);
  const std::string content = contentOf(folder / "file");
  EXPECT_TRUE(isWhole(content));
  EXPECT_NE(content[0], 'z');
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ConcurrentSave, ofSeveralProcessesNeverFailsAndLeavesOneWholeContent) {
  const TemporaryFolder folder;
  put(folder / "file", filled('z', size));
  std::vector<ChildProcess> children;
  for (int index = 0; index < 5; ++index) {
    children.emplace_back([&, letter = static_cast<char>('a' + 2 * index)] {
      return saveInThreads(folder / "file", letter, 2, 20);
    });
  }

  Onlooker onlooker(folder / "file");
  for (ChildProcess& child : children)
    EXPECT_EQ(child.wait(), 0);
  EXPECT_EQ(onlooker.partsSeen(), 0);
  const std::string content = contentOf(folder / "file");
  EXPECT_TRUE(isWhole(content));
  EXPECT_NE(content[0], 'z');
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ConcurrentSave, ofTheFirstFileInANewFolderNeverFails) {
  for (int round = 0; round < 20; ++round) {
    const TemporaryFolder folder;
    const fs::path path = folder / "a" / "b" / "c" / "file";
    EXPECT_EQ(saveInThreads(path, 'a', 6, 1), 0);
    EXPECT_TRUE(isWhole(contentOf(path)));
    EXPECT_EQ(modeOf(path.parent_path()), 0700u);
    EXPECT_EQ(namesIn(path.parent_path()), Names{"file"});
  }
}

} // namespace
} // namespace trellivar
