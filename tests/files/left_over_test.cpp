#include "files/durable_file.h"
#include "files/temporary_name.h"
#include "tests/files/file_facts.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <limits>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

/// No system numbers its processes that high.
constexpr pid_t nobody = std::numeric_limits<pid_t>::max();

/// The number of a process that has just ended.
pid_t endedProcess() {
  ChildProcess child([] { return 0; });
  const pid_t id = child.id();
  child.wait();
  return id;
}

TEST(LeftOver, isGoneAfterTheNextSave) {
  const TemporaryFolder folder;
  put(folder / TemporaryName{endedProcess(), 0}.text("file"), "half");
  put(folder / TemporaryName{nobody, 7}.text("file"), "");
  put(folder / TemporaryName{nobody, 18446744073709551615u}.text("file"), "half");
  replaceFile(folder / "file", "content");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
  EXPECT_EQ(contentOf(folder / "file"), "content");
}

TEST(LeftOver, isGoneAfterASaveThroughALink) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  fs::create_symlink(elsewhere / "file", folder / "link");
  put(elsewhere / TemporaryName{nobody, 1}.text("file"), "half");
  replaceFile(folder / "link", "content");
  EXPECT_EQ(namesIn(elsewhere.path()), Names{"file"});
}

TEST(LeftOver, makesRoomEvenWhenTheSaveFails) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "file");
  put(folder / TemporaryName{nobody, 1}.text("file"), "half");
  EXPECT_THROW(replaceFile(folder / "file", "content"), FileError);
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(LeftOver, isNoneWhileItsProcessRuns) {
  const TemporaryFolder folder;
  const ChildProcess running([] {
    ::pause();
    return 0;
  });
  const std::string name = TemporaryName{running.id(), 0}.text("file");
  put(folder / name, "half");
  replaceFile(folder / "file", "content");
  EXPECT_EQ(namesIn(folder.path()), (Names{name, "file"}));
}

// Another thread may be in the middle of a save.
TEST(LeftOver, isNoneOfThisProcess) {
  const TemporaryFolder folder;
  const std::string name = TemporaryName{::getpid(), 1'000'000}.text("file");
  put(folder / name, "half");
  replaceFile(folder / "file", "content");
  EXPECT_EQ(namesIn(folder.path()), (Names{name, "file"}));
}

// Asking after somebody else's process is forbidden, which is not the same as "no such process".
TEST(LeftOver, isNoneOfARunningProcessOfAnotherUser) {
  const TemporaryFolder folder;
  fs::permissions(folder.path(), fs::perms::all);
  const std::string name = TemporaryName{1, 0}.text("file");
  put(folder / name, "half");

  const int status = exitStatusOf([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) return 2;
    if (::kill(1, 0) == 0 || errno != EPERM) return 3;
    replaceFile(folder / "file", "content");
    return 0;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(namesIn(folder.path()), (Names{name, "file"}));
}

TEST(LeftOver, isNothingButAnExactMatch) {
  const std::string dead = std::to_string(nobody);
  const Names others = {
      ".other." + dead + "-1.tmp",    // another file's
      "file." + dead + "-1.tmp",      // not hidden
      "..file." + dead + "-1.tmp",    //
      "x.file." + dead + "-1.tmp",    //
      ".file" + dead + "-1.tmp",      // a separator is missing
      ".fileX" + dead + "-1.tmp",     //
      ".file." + dead + "-1tmp",      //
      ".file." + dead + "1.tmp",      //
      ".file." + dead + "_1.tmp",     //
      ".file." + dead + "-1",         // no suffix
      ".file." + dead + "-1.tmp~",    // something after it
      ".file." + dead + "-1.tmp.tmp", //
      ".file." + dead + "-1.temp",    //
      ".file." + dead + "-1.TMP",     //
      ".file." + dead + ".tmp",       // a number is missing
      ".file." + dead + "-.tmp",      //
      ".file.-1.tmp",                 //
      ".file.-.tmp",                  //
      ".file..tmp",                   //
      ".file.tmp",                    //
      ".file.0-1.tmp",                // no process has this number
      ".file.-" + dead + "-1.tmp",    //
      ".file.0" + dead + "-1.tmp",    // another spelling
      ".file." + dead + "-01.tmp",    //
      ".file.+" + dead + "-1.tmp",    //
      ".file. " + dead + "-1.tmp",    //
      ".file." + dead + "--1.tmp",    //
      ".file." + dead + "-+1.tmp",    //
      ".file." + dead + "-1-1.tmp",   //
      ".file." + dead + "-1 .tmp",    //
      ".file." + dead + "-a.tmp",     //
      ".file.0x7fffffff-1.tmp",       //
      ".file.2147483648-1.tmp",       // one more than fits
      ".file.4294967297-1.tmp",       //
      ".file." + dead + "-18446744073709551616.tmp",
      ".file.backup." + dead + "-1.tmp",
      ".file.json." + dead + "-1.tmp",
  };
  const TemporaryFolder folder;
  for (const std::string& name : others)
    put(folder / name, name);

  replaceFile(folder / "file", "content");
  for (const std::string& name : others) {
    EXPECT_TRUE(fs::exists(folder / name) && contentOf(folder / name) == name) << name;
  }
  EXPECT_EQ(namesIn(folder.path()).size(), others.size() + 1);
}

TEST(LeftOver, isMatchedByTheLiteralNameOfTheFile) {
  const TemporaryFolder folder;
  const std::string own = TemporaryName{nobody, 1}.text("[a].*");
  const std::string other = TemporaryName{nobody, 1}.text("a.json");
  put(folder / own, "");
  put(folder / other, "");
  replaceFile(folder / "[a].*", "content");
  EXPECT_EQ(namesIn(folder.path()), (Names{other, "[a].*"}));
}

TEST(LeftOver, isNoFolderAndNoLink) {
  const TemporaryFolder folder;
  put(folder / "precious", "precious");
  const std::string subfolder = TemporaryName{nobody, 1}.text("file");
  const std::string link = TemporaryName{nobody, 2}.text("file");
  fs::create_directory(folder / subfolder);
  fs::create_symlink("precious", folder / link);
  replaceFile(folder / "file", "content");
  EXPECT_EQ(namesIn(folder.path()), (Names{subfolder, link, "file", "precious"}));
  EXPECT_EQ(contentOf(folder / "precious"), "precious");
}

TEST(LeftOver, isLookedForOnlyInTheFolderOfTheFile) {
  const TemporaryFolder folder;
  const std::string name = TemporaryName{nobody, 1}.text("file");
  fs::create_directories(folder / "a" / "b");
  put(folder / name, "");
  put(folder / "a" / "b" / name, "");
  replaceFile(folder / "a" / "file", "content");
  EXPECT_TRUE(fs::exists(folder / name));
  EXPECT_TRUE(fs::exists(folder / "a" / "b" / name));
}

} // namespace
} // namespace trellivar
