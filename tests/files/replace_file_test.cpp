#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

/// The folder that relative paths start from, put back at the end.
class CurrentFolderChange {
public:
  explicit CurrentFolderChange(const fs::path& folder) : before_(fs::current_path()) {
    fs::current_path(folder);
  }
  CurrentFolderChange(const CurrentFolderChange&) = delete;
  CurrentFolderChange& operator=(const CurrentFolderChange&) = delete;
  ~CurrentFolderChange() { fs::current_path(before_); }

private:
  fs::path before_;
};

TEST(ReplaceFile, createsTheFileAndNothingElse) {
  const TemporaryFolder folder;
  replaceFile(folder / "file", "content");
  EXPECT_EQ(contentOf(folder / "file"), "content");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFile, leavesNothingOfALongerOldContent) {
  const TemporaryFolder folder;
  put(folder / "file", filled('o', 100'000));
  replaceFile(folder / "file", "new");
  EXPECT_EQ(contentOf(folder / "file"), "new");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFile, storesEmptyContent) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  replaceFile(folder / "file", "");
  EXPECT_EQ(contentOf(folder / "file"), "");
}

TEST(ReplaceFile, storesZeroBytesAndLargeContent) {
  const TemporaryFolder folder;
  const std::string content = filled('a', 3'000'001) + '\0' + filled('b', 2'000'003) + '\0';
  replaceFile(folder / "file", content);
  EXPECT_TRUE(contentOf(folder / "file") == content);
}

TEST(ReplaceFile, storesWhatReadFileReturns) {
  const TemporaryFolder folder;
  for (const std::string_view content : {"first", "", "second\n"}) {
    replaceFile(folder / "file", content);
    EXPECT_EQ(readFile(folder / "file"), content);
  }
}

// Whoever has the old file open, or a second name for it, would see a file written in place change.
TEST(ReplaceFile, neverWritesIntoTheOldFile) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  fs::create_hard_link(folder / "file", folder / "second name");
  replaceFile(folder / "file", "new");
  EXPECT_EQ(contentOf(folder / "second name"), "old");
  EXPECT_EQ(contentOf(folder / "file"), "new");
}

TEST(ReplaceFile, replacesAReadOnlyFile) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  fs::permissions(folder / "file", fs::perms::owner_read);
  replaceFile(folder / "file", "new");
  EXPECT_EQ(contentOf(folder / "file"), "new");
}

TEST(ReplaceFile, acceptsNamesThatLookLikePatterns) {
  const TemporaryFolder folder;
  for (const char* name : {".hidden", "[a]*?.json", "with space", "-", "...", "tabs\tand\nlines"}) {
    replaceFile(folder / name, name);
    EXPECT_EQ(contentOf(folder / name), name);
  }
  EXPECT_EQ(namesIn(folder.path()).size(), 6u);
}

TEST(ReplaceFile, takesAPathWithoutFolderFromTheCurrentFolder) {
  const TemporaryFolder folder;
  const CurrentFolderChange change(folder.path());
  replaceFile("file", "content");
  EXPECT_EQ(contentOf(folder / "file"), "content");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFile, createsRelativeFolders) {
  const TemporaryFolder folder;
  const CurrentFolderChange change(folder.path());
  replaceFile("outer/inner/file", "content");
  EXPECT_EQ(contentOf(folder / "outer" / "inner" / "file"), "content");
}

TEST(ReplaceFileMode, letsOnlyTheOwnerReadANewFile) {
  const TemporaryFolder folder;
  const UmaskChange umask(0);
  replaceFile(folder / "file", "content");
  EXPECT_EQ(modeOf(folder / "file"), 0600u);
}

TEST(ReplaceFileMode, narrowsTheModeOfAnOldFile) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  fs::permissions(folder / "file", fs::perms(0666));
  replaceFile(folder / "file", "new");
  EXPECT_EQ(modeOf(folder / "file"), 0600u);
}

TEST(ReplaceFileMode, isTheSameUnderEveryUmask) {
  for (const mode_t mask : {0u, 0002u, 0022u, 0027u, 0077u, 0177u, 0277u, 0400u, 0777u}) {
    const TemporaryFolder folder;
    const UmaskChange umask(mask);
    replaceFile(folder / "new folder" / "file", "content");
    EXPECT_EQ(modeOf(folder / "new folder" / "file"), 0600u) << mask;
    EXPECT_EQ(modeOf(folder / "new folder"), 0700u) << mask;
  }
}

TEST(ReplaceFileMode, leavesTheUmaskAlone) {
  const TemporaryFolder folder;
  const UmaskChange umask(0027);
  replaceFile(folder / "new folder" / "file", "content");
  EXPECT_EQ(::umask(0027), 0027u);
}

TEST(ReplaceFileFolder, createsAllMissingFoldersButOnlyTheLastIsPrivate) {
  for (const auto& [mask, mode] : {std::pair{0022, 0755u}, {0, 0777u}, {0002, 0775u}}) {
    const TemporaryFolder folder;
    const UmaskChange umask(static_cast<mode_t>(mask));
    replaceFile(folder / "a" / "b" / "c" / "file", "content");
    EXPECT_EQ(contentOf(folder / "a" / "b" / "c" / "file"), "content");
    EXPECT_EQ(modeOf(folder / "a"), mode);
    EXPECT_EQ(modeOf(folder / "a" / "b"), mode);
    EXPECT_EQ(modeOf(folder / "a" / "b" / "c"), 0700u);
  }
}

TEST(ReplaceFileFolder, keepsTheModeOfFoldersThatExist) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "outer" / "inner");
  fs::permissions(folder / "outer", fs::perms(0711));
  fs::permissions(folder / "outer" / "inner", fs::perms(0755));
  replaceFile(folder / "outer" / "inner" / "file", "content");
  EXPECT_EQ(modeOf(folder / "outer"), 0711u);
  EXPECT_EQ(modeOf(folder / "outer" / "inner"), 0755u);
}

TEST(ReplaceFileFolder, keepsTheModeOfAnExistingFolderAboveANewOne) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "outer");
  fs::permissions(folder / "outer", fs::perms(0755));
  replaceFile(folder / "outer" / "inner" / "file", "content");
  EXPECT_EQ(modeOf(folder / "outer"), 0755u);
  EXPECT_EQ(modeOf(folder / "outer" / "inner"), 0700u);
}

TEST(ReplaceFileFolder, seesThroughDotsAndDoubledSlashes) {
  const TemporaryFolder folder;
  const UmaskChange umask(0022);
  replaceFile(folder.path().string() + "//new/.//./file", "content");
  EXPECT_EQ(contentOf(folder / "new" / "file"), "content");
  EXPECT_EQ(modeOf(folder / "new"), 0700u);
}

} // namespace
} // namespace trellivar
