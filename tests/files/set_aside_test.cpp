#include "files/set_aside.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace trellivar {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(SetAside, renamesAFile) {
  const TemporaryFolder folder;
  put(folder / "data.json", "content");
  EXPECT_EQ(setAside(folder / "data.json"), folder / "data.json.unreadable");
  EXPECT_EQ(namesIn(folder.path()), Names{"data.json.unreadable"});
  EXPECT_EQ(contentOf(folder / "data.json.unreadable"), "content");
}

TEST(SetAside, takesTheFirstNameThatIsFree) {
  const TemporaryFolder folder;
  for (const char* suffix : {"", "-2", "-3"}) {
    put(folder / "file", suffix);
    EXPECT_EQ(setAside(folder / "file"), folder / (std::string("file.unreadable") + suffix));
  }
  fs::remove(folder / "file.unreadable-2");
  put(folder / "file", "again");
  EXPECT_EQ(setAside(folder / "file"), folder / "file.unreadable-2");
  EXPECT_EQ(contentOf(folder / "file.unreadable"), "");
  EXPECT_EQ(contentOf(folder / "file.unreadable-2"), "again");
  EXPECT_EQ(contentOf(folder / "file.unreadable-3"), "-3");
}

TEST(SetAside, countsOnPastNine) {
  const TemporaryFolder folder;
  put(folder / "file.unreadable", "");
  for (int number = 2; number <= 11; ++number)
    put(folder / ("file.unreadable-" + std::to_string(number)), "");
  put(folder / "file", "");
  EXPECT_EQ(setAside(folder / "file"), folder / "file.unreadable-12");
}

TEST(SetAside, takesNoNameThatAnythingHas) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "file.unreadable");
  fs::create_symlink("nowhere", folder / "file.unreadable-2");
  ASSERT_EQ(::mkfifo((folder / "file.unreadable-3").c_str(), 0600), 0);
  put(folder / "file", "content");
  EXPECT_EQ(setAside(folder / "file"), folder / "file.unreadable-4");
  EXPECT_TRUE(fs::is_directory(folder / "file.unreadable"));
  EXPECT_EQ(fs::read_symlink(folder / "file.unreadable-2"), "nowhere");
}

TEST(SetAside, renamesAFolderWithAllThatIsInIt) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "file");
  put(folder / "file" / "notes", "mine");
  EXPECT_EQ(setAside(folder / "file"), folder / "file.unreadable");
  EXPECT_EQ(contentOf(folder / "file.unreadable" / "notes"), "mine");
}

TEST(SetAside, renamesALinkAndNotWhatItLeadsTo) {
  const TemporaryFolder folder;
  put(folder / "target", "content");
  fs::create_symlink("target", folder / "file");
  fs::create_symlink("nowhere", folder / "dangling");
  EXPECT_EQ(setAside(folder / "file"), folder / "file.unreadable");
  EXPECT_EQ(setAside(folder / "dangling"), folder / "dangling.unreadable");
  EXPECT_EQ(fs::read_symlink(folder / "file.unreadable"), "target");
  EXPECT_EQ(fs::read_symlink(folder / "dangling.unreadable"), "nowhere");
  EXPECT_EQ(contentOf(folder / "target"), "content");
}

TEST(SetAside, renamesAPipeWithoutWaitingForItsOtherEnd) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "file").c_str(), 0600), 0);
  setAside(folder / "file");
  EXPECT_TRUE(fs::is_fifo(folder / "file.unreadable"));
}

TEST(SetAside, keepsPermissions) {
  const TemporaryFolder folder;
  put(folder / "file", "");
  fs::permissions(folder / "file", fs::perms::none);
  setAside(folder / "file");
  EXPECT_EQ(modeOf(folder / "file.unreadable"), 0U);
}

TEST(SetAside, failsWithoutAFile) {
  const TemporaryFolder folder;
  const auto error = fileErrorOf([&] { setAside(folder / "file"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code(), std::errc::no_such_file_or_directory);
  EXPECT_EQ(error->path(), folder / "file");
  EXPECT_EQ(failureOf([&] { setAside(folder / "none" / "file"); }),
            std::errc::no_such_file_or_directory);
  EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST(SetAside, failsWhenNoLongerNameIsPossible) {
  const TemporaryFolder folder;
  const std::string longest(255, 'n');
  put(folder / longest, "content");
  const auto error = fileErrorOf([&] { setAside(folder / longest); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code(), std::errc::filename_too_long);
  EXPECT_EQ(error->path(), folder / (longest + ".unreadable"));
  EXPECT_EQ(contentOf(folder / longest), "content");
}

TEST(SetAside, leavesTheFileItsNameWhereNothingMayBeRenamed) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
  const int status = exitStatusOf([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
    const auto error = fileErrorOf([&] { setAside(folder / "file"); });
    if (!error || error->path() != folder / "file") return 3;
    return error->code() == std::errc::permission_denied ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
  EXPECT_EQ(contentOf(folder / "file"), "content");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

} // namespace
} // namespace trellivar
