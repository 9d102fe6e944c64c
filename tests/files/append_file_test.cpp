#include "files/append_file.h"
#include "files/file_descriptor.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <sstream>
#include <thread>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

TEST(AppendToFile, createsAFileThatEveryoneMayRead) {
  const UmaskChange usual(022);
  const TemporaryFolder folder;
  EXPECT_TRUE(appendToFile(folder / "file", "first\n"));
  EXPECT_EQ(contentOf(folder / "file"), "first\n");
  EXPECT_EQ(modeOf(folder / "file"), 0644U);
}

TEST(AppendToFile, nobodyElseMayWriteWhateverTheUmaskAllows) {
  const UmaskChange everything(0);
  const TemporaryFolder folder;
  EXPECT_TRUE(appendToFile(folder / "file", "first\n"));
  EXPECT_EQ(modeOf(folder / "file"), 0644U);
}

TEST(AppendToFile, keepsWhatIsThereAndItsPermissions) {
  const TemporaryFolder folder;
  put(folder / "file", "before\n");
  fs::permissions(folder / "file", fs::perms(0600));
  EXPECT_TRUE(appendToFile(folder / "file", "after\n"));
  EXPECT_TRUE(appendToFile(folder / "file", "last\n"));
  EXPECT_EQ(contentOf(folder / "file"), "before\nafter\nlast\n");
  EXPECT_EQ(modeOf(folder / "file"), 0600U);
}

TEST(AppendToFile, appendsBytesOfEveryKind) {
  const TemporaryFolder folder;
  const std::string bytes("\0\xFF\r\n", 4);
  EXPECT_TRUE(appendToFile(folder / "file", bytes));
  EXPECT_TRUE(appendToFile(folder / "file", ""));
  EXPECT_EQ(contentOf(folder / "file"), bytes);
}

TEST(AppendToFile, writesNotThroughALink) {
  const TemporaryFolder folder;
  put(folder / "target", "mine");
  fs::create_symlink("target", folder / "link");
  EXPECT_FALSE(appendToFile(folder / "link", "text"));
  EXPECT_EQ(contentOf(folder / "target"), "mine");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

TEST(AppendToFile, createsNothingThroughADanglingLink) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder / "link");
  EXPECT_FALSE(appendToFile(folder / "link", "text"));
  EXPECT_EQ(namesIn(folder.path()), Names{"link"});
  EXPECT_FALSE(fs::exists(folder / "link"));
}

TEST(AppendToFile, waitsNotForTheReaderOfAPipe) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(appendToFile(folder / "pipe", "text"));
}

TEST(AppendToFile, givesNothingToTheReaderOfAPipe) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  const FileDescriptor reader(::open((folder / "pipe").c_str(), O_RDONLY | O_NONBLOCK));
  ASSERT_TRUE(reader.isOpen());
  EXPECT_FALSE(appendToFile(folder / "pipe", "text"));
  char byte = 0;
  EXPECT_EQ(::read(reader.get(), &byte, 1), 0);
}

TEST(AppendToFile, writesToNoDevice) { EXPECT_FALSE(appendToFile("/dev/null", "text")); }

TEST(AppendToFile, failsWhereNoFileCanBe) {
  const TemporaryFolder folder;
  EXPECT_FALSE(appendToFile(folder.path(), "text"));
  EXPECT_FALSE(appendToFile(folder / "none" / "file", "text"));
  EXPECT_FALSE(appendToFile("", "text"));
  EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST(AppendToFile, failsWithoutPermission) {
  const TemporaryFolder folder;
  put(folder / "file", "mine");
  fs::permissions(folder / "file", fs::perms(0444));
  fs::permissions(folder.path(), fs::perms(0755));
  ChildProcess other([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
    return appendToFile(folder / "file", "text") ? 1 : 0;
  });
  EXPECT_EQ(other.wait(), 0);
  EXPECT_EQ(contentOf(folder / "file"), "mine");
}

TEST(AppendToFile, leavesNoDescriptorOpen) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder / "link");
  const FileDescriptor before(::open("/dev/null", O_RDONLY));
  for (const char* name : {"file", "link", "none/file", "."})
    appendToFile(folder / name, "text");
  const FileDescriptor after(::open("/dev/null", O_RDONLY));
  EXPECT_EQ(after.get(), before.get() + 1) << "the lowest that is free";
}

TEST(AppendToFile, threadsDoNotMixTheirBytes) {
  const TemporaryFolder folder;
  constexpr int count = 100;
  std::vector<std::thread> threads;
  for (const char letter : {'a', 'b', 'c', 'd'}) {
    threads.emplace_back([&folder, letter] {
      for (int i = 0; i < count; ++i)
        appendToFile(folder / "file", filled(letter, 5000) + "\n");
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  std::map<std::string, int> lines;
  std::istringstream content(contentOf(folder / "file"));
  for (std::string line; std::getline(content, line);)
    ++lines[line];
  EXPECT_EQ(lines, (std::map<std::string, int>{{filled('a', 5000), count},
                                               {filled('b', 5000), count},
                                               {filled('c', 5000), count},
                                               {filled('d', 5000), count}}));
}

} // namespace
} // namespace trellivar
