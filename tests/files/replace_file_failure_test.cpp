#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

TEST(ReplaceFileFailure, namesAFolderThatIsAFile) {
  const TemporaryFolder folder;
  put(folder / "folder", "old");
  for (const char* name : {"folder/file", "folder/deeper/file", "folder/even/deeper/file"}) {
    EXPECT_EQ(failureOf([&] { replaceFile(folder / name, "new"); }), std::errc::not_a_directory)
        << name;
  }
  EXPECT_EQ(contentOf(folder / "folder"), "old");
  EXPECT_EQ(namesIn(folder.path()), Names{"folder"});
}

TEST(ReplaceFileFailure, leavesNoTemporaryFileWhereTheTargetIsAFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "file");
  EXPECT_EQ(failureOf([&] { replaceFile(folder / "file", "new"); }), std::errc::is_a_directory);
  EXPECT_TRUE(fs::is_directory(folder / "file"));
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFileFailure, refusesPathsThatNameNoFile) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "folder");
  for (const char* name : {"folder/", "folder/.", "folder/..", "missing/", "."}) {
    EXPECT_EQ(failureOf([&] { replaceFile(folder / name, "new"); }), std::errc::is_a_directory)
        << name;
  }
  EXPECT_EQ(failureOf([] { replaceFile("", "new"); }), std::errc::no_such_file_or_directory);
  EXPECT_EQ(namesIn(folder.path()), Names{"folder"});
  EXPECT_EQ(namesIn(folder / "folder"), Names{});
}

TEST(ReplaceFileFailure, doesNotMistakeAZeroByteForTheEndOfThePath) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  const std::string path = (folder / "file").string() + '\0' + ".json";
  EXPECT_EQ(failureOf([&] { replaceFile(path, "new"); }), std::errc::invalid_argument);
  EXPECT_EQ(contentOf(folder / "file"), "old");
}

TEST(ReplaceFileFailure, leavesAPipeInItsPlace) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(failureOf([&] { replaceFile(folder / "pipe", "new"); }),
            std::errc::operation_not_supported);
  EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
  EXPECT_EQ(namesIn(folder.path()), Names{"pipe"});
}

TEST(ReplaceFileFailure, keepsTheOldContentWhenTheNameIsTooLongForATemporaryFile) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  put(folder / name, "old");
  EXPECT_EQ(failureOf([&] { replaceFile(folder / name, "new"); }), std::errc::filename_too_long);
  EXPECT_EQ(contentOf(folder / name), "old");
  EXPECT_EQ(namesIn(folder.path()), Names{name});
}

TEST(ReplaceFileFailure, keepsTheOldContentWhenTheNewOneDoesNotFit) {
  const TemporaryFolder folder;
  put(folder / "file", "old");

  const int status = exitStatusOf([&] {
    const rlimit limit{4096, 4096};
    ::signal(SIGXFSZ, SIG_IGN);
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    const auto code = failureOf([&] { replaceFile(folder / "file", filled('n', 100'000)); });
    return code == std::errc::file_too_large ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(contentOf(folder / "file"), "old");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFileFailure, createsNoFileWhenTheFirstContentDoesNotFit) {
  const TemporaryFolder folder;

  const int status = exitStatusOf([&] {
    const rlimit limit{4096, 4096};
    ::signal(SIGXFSZ, SIG_IGN);
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    return failureOf([&] { replaceFile(folder / "file", filled('n', 4097)); }) ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST(ReplaceFileFailure, doesNotPreventTheNextSave) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "file");
  EXPECT_THROW(replaceFile(folder / "file", "new"), FileError);
  fs::remove(folder / "file");
  replaceFile(folder / "file", "new");
  EXPECT_EQ(contentOf(folder / "file"), "new");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFileFailure, namesTheFolderThatIsInTheWay) {
  const TemporaryFolder folder;
  put(folder / "folder", "");
  const auto error = fileErrorOf([&] { replaceFile(folder / "folder/deeper/file", "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->path().string().find((folder / "folder").string()), 0u) << error->path();
}

TEST(ReplaceFileFailure, namesTheFileThatALinkLeadsTo) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  fs::create_directory_symlink("real", folder / "link");
  const auto error = fileErrorOf([&] { replaceFile(folder / "link", "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->path(), folder / "real");
}

} // namespace
} // namespace trellivar
