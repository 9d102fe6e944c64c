#include "files/durable_file.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

/// Bytes of all values in an order that shifting, dropping or repeating a part changes.
std::string mixedBytes(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

TEST(ReadFile, returnsEveryByteWhateverTheSize) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0u, 1u, 65535u, 65536u, 65537u, 5'000'003u}) {
    const std::string content = mixedBytes(size);
    put(folder / "file", content);
    EXPECT_TRUE(readFile(folder / "file") == content) << size;
  }
}

TEST(ReadFile, isEmptyButPresentForEmptyFile) {
  const TemporaryFolder folder;
  put(folder / "file", "");
  EXPECT_EQ(readFile(folder / "file"), "");
}

TEST(ReadFile, isNoneWhereThereIsNoFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(readFile(folder / "file"), std::nullopt);
}

TEST(ReadFile, isNoneWhereThereIsNoFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(readFile(folder / "missing" / "file"), std::nullopt);
}

TEST(ReadFile, isNoneWhereTheFolderIsAFile) {
  const TemporaryFolder folder;
  put(folder / "folder", "");
  EXPECT_EQ(readFile(folder / "folder" / "file"), std::nullopt);
}

TEST(ReadFile, isNoneWhereTheLinkDangles) {
  const TemporaryFolder folder;
  fs::create_symlink("missing", folder / "link");
  EXPECT_EQ(readFile(folder / "link"), std::nullopt);
}

TEST(ReadFile, followsLinks) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  fs::create_symlink("file", folder / "link");
  EXPECT_EQ(readFile(folder / "link"), "content");
}

TEST(ReadFile, failsOnLinksInACircle) {
  const TemporaryFolder folder;
  fs::create_symlink("second", folder / "first");
  fs::create_symlink("first", folder / "second");
  EXPECT_EQ(failureOf([&] { readFile(folder / "first"); }),
            std::errc::too_many_symbolic_link_levels);
}

TEST(ReadFile, failsOnAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(failureOf([&] { readFile(folder.path()); }), std::errc::is_a_directory);
}

TEST(ReadFile, failsOnAPipeInsteadOfWaitingForItsWriter) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);

  const int status = exitStatusOf([&] {
    ::alarm(20);
    const auto code = failureOf([&] { readFile(folder / "pipe"); });
    return code == std::errc::operation_not_supported ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
}

TEST(ReadFile, failsOnADevice) {
  EXPECT_EQ(failureOf([] { readFile("/dev/null"); }), std::errc::operation_not_supported);
}

TEST(ReadFile, failsOnASocket) {
  const TemporaryFolder folder;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = (folder / "socket").string();
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(address.sun_path, path.size());
  const int server = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

  EXPECT_TRUE(failureOf([&] { readFile(path); }));
  ::close(server);
}

TEST(ReadFile, failsWithoutPermission) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  fs::permissions(folder / "file", fs::perms::none);
  fs::permissions(folder.path(), fs::perms::all);

  // The superuser may read everything, so somebody else has to try.
  const int status = exitStatusOf([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
    const auto code = failureOf([&] { readFile(folder / "file"); });
    return code == std::errc::permission_denied ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
}

TEST(ReadFile, doesNotMistakeAZeroByteForTheEndOfThePath) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  const std::string path = (folder / "file").string() + '\0' + ".json";
  EXPECT_EQ(failureOf([&] { readFile(path); }), std::errc::invalid_argument);
}

TEST(FileError, namesThePathAndTheReason) {
  const TemporaryFolder folder;
  const auto error = fileErrorOf([&] { readFile(folder.path()); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->path(), folder.path());
  EXPECT_EQ(error->what(), folder.path().string() + ": " +
                               std::make_error_code(std::errc::is_a_directory).message());
}

} // namespace
} // namespace trellivar
