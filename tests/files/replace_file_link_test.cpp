#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

/// A chain of `count` links, "link1" being the last, that leads to "file".
fs::path chainOfLinks(const TemporaryFolder& folder, int count) {
  std::string target = "file";
  for (int number = 1; number <= count; ++number) {
    const std::string link = "link" + std::to_string(number);
    fs::create_symlink(target, folder / link);
    target = link;
  }
  return folder / target;
}

TEST(ReplaceFileThroughLink, replacesTheTargetAndKeepsTheLink) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  fs::create_symlink("file", folder / "link");
  replaceFile(folder / "link", "new");
  EXPECT_EQ(contentOf(folder / "file"), "new");
  EXPECT_EQ(fs::read_symlink(folder / "link"), "file");
  EXPECT_EQ(namesIn(folder.path()), (Names{"file", "link"}));
}

TEST(ReplaceFileThroughLink, followsAnAbsoluteLink) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  put(elsewhere / "file", "old");
  fs::create_symlink(elsewhere / "file", folder / "link");
  replaceFile(folder / "link", "new");
  EXPECT_EQ(contentOf(elsewhere / "file"), "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(namesIn(elsewhere.path()), Names{"file"});
}

TEST(ReplaceFileThroughLink, readsARelativeLinkFromTheFolderOfTheLink) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "links");
  fs::create_directories(folder / "files");
  put(folder / "files" / "file", "old");
  fs::create_symlink("../files/file", folder / "links" / "link");
  replaceFile(folder / "links" / "link", "new");
  EXPECT_EQ(contentOf(folder / "files" / "file"), "new");
  EXPECT_EQ(namesIn(folder / "links"), Names{"link"});
  EXPECT_EQ(namesIn(folder.path()), (Names{"files", "links"}));
}

TEST(ReplaceFileThroughLink, readsEachLinkOfAChainFromItsOwnFolder) {
  const TemporaryFolder folder;
  for (const char* name : {"a", "b", "c"})
    fs::create_directory(folder / name);
  fs::create_symlink("../b/second", folder / "a" / "first");
  fs::create_symlink(folder / "c" / "third", folder / "b" / "second");
  fs::create_symlink("file", folder / "c" / "third");
  put(folder / "c" / "file", "old");

  replaceFile(folder / "a" / "first", "new");
  EXPECT_EQ(contentOf(folder / "c" / "file"), "new");
  EXPECT_EQ(namesIn(folder / "a"), Names{"first"});
  EXPECT_EQ(namesIn(folder / "b"), Names{"second"});
  EXPECT_EQ(namesIn(folder / "c"), (Names{"file", "third"}));
}

// "real/../file" is beside "real", not beside the link "shortcut" that leads there.
TEST(ReplaceFileThroughLink, leavesDotDotAfterALinkedFolderToTheSystem) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "deep" / "real");
  fs::create_directory_symlink("deep/real", folder / "shortcut");
  put(folder / "deep" / "file", "old");
  fs::create_symlink("shortcut/../file", folder / "link");
  replaceFile(folder / "link", "new");
  EXPECT_EQ(contentOf(folder / "deep" / "file"), "new");
  EXPECT_FALSE(fs::exists(folder / "file"));
}

TEST(ReplaceFileThroughLink, createsTheTargetOfADanglingLink) {
  const TemporaryFolder folder;
  fs::create_symlink("file", folder / "link");
  replaceFile(folder / "link", "new");
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder / "file")));
  EXPECT_EQ(contentOf(folder / "file"), "new");
  EXPECT_EQ(fs::read_symlink(folder / "link"), "file");
  EXPECT_EQ(modeOf(folder / "file"), 0600u);
}

TEST(ReplaceFileThroughLink, createsTheFoldersOfADanglingLink) {
  const TemporaryFolder folder;
  fs::create_symlink("outer/inner/file", folder / "link");
  replaceFile(folder / "link", "new");
  EXPECT_EQ(contentOf(folder / "outer" / "inner" / "file"), "new");
  EXPECT_EQ(modeOf(folder / "outer" / "inner"), 0700u);
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

TEST(ReplaceFileThroughLink, passesThroughALinkedFolderAndLeavesItAlone) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  fs::permissions(folder / "real", fs::perms(0755));
  fs::create_directory_symlink("real", folder / "shortcut");
  replaceFile(folder / "shortcut" / "file", "content");
  EXPECT_EQ(contentOf(folder / "real" / "file"), "content");
  EXPECT_EQ(modeOf(folder / "real"), 0755u);
  EXPECT_EQ(fs::read_symlink(folder / "shortcut"), "real");
}

TEST(ReplaceFileThroughLink, failsOnALinkToAFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  fs::create_directory_symlink("real", folder / "link");
  EXPECT_EQ(failureOf([&] { replaceFile(folder / "link", "content"); }), std::errc::is_a_directory);
  EXPECT_EQ(namesIn(folder.path()), (Names{"link", "real"}));
  EXPECT_EQ(namesIn(folder / "real"), Names{});
}

TEST(ReplaceFileThroughLink, failsOnLinksInACircle) {
  const TemporaryFolder folder;
  fs::create_symlink("second", folder / "first");
  fs::create_symlink("first", folder / "second");
  EXPECT_EQ(failureOf([&] { replaceFile(folder / "first", "content"); }),
            std::errc::too_many_symbolic_link_levels);
  EXPECT_EQ(namesIn(folder.path()), (Names{"first", "second"}));
}

TEST(ReplaceFileThroughLink, followsFortyLinks) {
  const TemporaryFolder folder;
  replaceFile(chainOfLinks(folder, 40), "content");
  EXPECT_EQ(contentOf(folder / "file"), "content");
  EXPECT_TRUE(fs::is_symlink(folder / "link1"));
}

TEST(ReplaceFileThroughLink, givesUpAfterFortyLinks) {
  const TemporaryFolder folder;
  const fs::path start = chainOfLinks(folder, 41);
  EXPECT_EQ(failureOf([&] { replaceFile(start, "content"); }),
            std::errc::too_many_symbolic_link_levels);
  EXPECT_FALSE(fs::exists(folder / "file"));
}

} // namespace
} // namespace trellivar
