#include "files/durable_file.h"
#include "files/temporary_name.h"
#include "tests/files/file_facts.h"
#include "tests/files/system_call_watch.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <map>
#include <string>

namespace trellivar {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

bool isFolder(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Where an open descriptor leads.
fs::path pathOf(int descriptor) {
  return fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor));
}

/// Fails every call of one kind on a file, or on a folder.
SystemCallWatch::Decision failing(SystemCall which, bool onFolder, int error) {
  return [=](SystemCall call, int descriptor) {
    return call == which && isFolder(descriptor) == onFolder ? error : 0;
  };
}

bool isRepeatable(SystemCall call) {
  return call == SystemCall::open || call == SystemCall::read || call == SystemCall::write ||
         call == SystemCall::flush;
}

/// Every other call of the kinds that can be repeated is interrupted.
SystemCallWatch::Decision interrupting(std::map<SystemCall, int>& interruptions) {
  return [&, calls = std::map<SystemCall, int>{}](SystemCall call, int) mutable {
    if (!isRepeatable(call) || ++calls[call] % 2 == 0) return 0;
    ++interruptions[call];
    return EINTR;
  };
}

/// The temporary file of a save of "content", at the moment when its first byte is written.
struct TemporaryFileFacts {
  fs::path path;
  unsigned mode = 0;
  bool isInherited = true;
  std::string content;
};

TemporaryFileFacts factsOf(int descriptor) {
  TemporaryFileFacts facts;
  facts.path = pathOf(descriptor);
  facts.mode = modeOf(facts.path);
  facts.isInherited = (::fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0;
  facts.content = contentOf(facts.path);
  return facts;
}

TemporaryFileFacts temporaryFileOfASave(const fs::path& path) {
  TemporaryFileFacts facts;
  const SystemCallWatch watch([&](SystemCall call, int descriptor) {
    if (call == SystemCall::write) facts = factsOf(descriptor);
    return 0;
  });
  replaceFile(path, "content");
  return facts;
}

TEST(ReadFile, readsOnAfterInterruptions) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  std::map<SystemCall, int> interruptions;
  const SystemCallWatch watch(interrupting(interruptions));
  EXPECT_EQ(readFile(folder / "file"), "content");
  EXPECT_EQ(interruptions[SystemCall::open], 1);
  EXPECT_EQ(interruptions[SystemCall::read], 2);
}

TEST(ReadFile, putsPiecesTogether) {
  const TemporaryFolder folder;
  put(folder / "file", "a content in pieces");
  const SystemCallWatch watch([](SystemCall, int) { return 0; }, 3);
  EXPECT_EQ(readFile(folder / "file"), "a content in pieces");
}

// Some files do not tell their size.
TEST(ReadFile, readsToTheEndWhateverTheSizeSays) {
  ASSERT_EQ(fs::file_size("/proc/self/status"), 0u);
  const auto content = readFile("/proc/self/status");
  ASSERT_TRUE(content);
  EXPECT_NE(content->find("Pid:"), std::string::npos);
}

TEST(ReadFile, failsWhenReadingFails) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  const SystemCallWatch watch(failing(SystemCall::read, false, EIO));
  EXPECT_EQ(failureOf([&] { readFile(folder / "file"); }), std::errc::io_error);
}

TEST(ReadFile, closesTheFileInEveryCase) {
  const TemporaryFolder folder;
  put(folder / "file", "content");
  int opened = 0;
  int closed = 0;
  {
    const SystemCallWatch watch([&](SystemCall call, int) {
      if (call == SystemCall::open) ++opened;
      if (call == SystemCall::close) ++closed;
      return call == SystemCall::read ? EIO : 0;
    });
    EXPECT_THROW(readFile(folder / "file"), FileError);
    EXPECT_THROW(readFile(folder.path()), FileError);
  }
  EXPECT_EQ(opened, 2);
  EXPECT_EQ(closed, 2);
}

TEST(ReplaceFile, writesTheTemporaryFileBesideTheTargetUnderItsOwnName) {
  const TemporaryFolder folder;
  const auto facts = temporaryFileOfASave(folder / "file");
  EXPECT_EQ(facts.path.parent_path(), fs::canonical(folder.path()));
  const auto name = TemporaryName::parse(facts.path.filename().string(), "file");
  ASSERT_TRUE(name) << facts.path;
  EXPECT_EQ(name->process, ::getpid());
  EXPECT_FALSE(facts.isInherited);
}

TEST(ReplaceFile, writesTheTemporaryFileBesideTheFileThatALinkLeadsTo) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  fs::create_symlink(elsewhere / "target", folder / "link");
  const auto facts = temporaryFileOfASave(folder / "link");
  EXPECT_EQ(facts.path.parent_path(), fs::canonical(elsewhere.path()));
  EXPECT_TRUE(TemporaryName::parse(facts.path.filename().string(), "target")) << facts.path;
}

TEST(ReplaceFileMode, isPrivateBeforeTheFirstByteIsWritten) {
  for (const mode_t mask : {0u, 0022u, 0777u}) {
    const TemporaryFolder folder;
    const UmaskChange umask(mask);
    EXPECT_EQ(temporaryFileOfASave(folder / "file").mode, 0600u) << mask;
  }
}

// Whoever opens the file while others may read it can read on after its mode is changed.
TEST(ReplaceFileMode, isPrivateFromTheBeginning) {
  const TemporaryFolder folder;
  const UmaskChange umask(0);
  std::vector<unsigned> modes;
  {
    const SystemCallWatch watch([&](SystemCall call, int descriptor) {
      if (call == SystemCall::changeMode) modes.push_back(modeOf(pathOf(descriptor)));
      return 0;
    });
    replaceFile(folder / "file", "content");
  }
  EXPECT_EQ(modes, std::vector{0600u});
}

TEST(ReplaceFile, neverWritesIntoATemporaryFileThatExists) {
  const TemporaryFolder folder;
  put(folder / "victim", "precious");
  const auto used =
      TemporaryName::parse(temporaryFileOfASave(folder / "file").path.filename().string(), "file");
  ASSERT_TRUE(used);
  const auto later = [&](std::uint64_t steps) {
    return folder / TemporaryName{used->process, used->counter + steps}.text("file");
  };
  put(later(1), "precious");
  fs::create_symlink("victim", later(2));
  fs::create_symlink("missing", later(3));

  const auto facts = temporaryFileOfASave(folder / "file");
  EXPECT_EQ(facts.path.filename(), later(4).filename());
  EXPECT_EQ(facts.content, "");
  EXPECT_EQ(contentOf(folder / "file"), "content");
  EXPECT_EQ(contentOf(later(1)), "precious");
  EXPECT_EQ(contentOf(folder / "victim"), "precious");
  EXPECT_TRUE(fs::is_symlink(later(2)));
  EXPECT_TRUE(fs::is_symlink(later(3)));
  EXPECT_FALSE(fs::exists(folder / "missing"));
}

TEST(ReplaceFile, putsPiecesTogether) {
  const TemporaryFolder folder;
  const SystemCallWatch watch([](SystemCall, int) { return 0; }, 3);
  replaceFile(folder / "file", "a content in pieces");
  EXPECT_EQ(readFile(folder / "file"), "a content in pieces");
}

TEST(ReplaceFile, goesOnAfterInterruptions) {
  const TemporaryFolder folder;
  std::map<SystemCall, int> interruptions;
  {
    const SystemCallWatch watch(interrupting(interruptions), 3);
    replaceFile(folder / "new folder" / "file", "content");
  }
  EXPECT_EQ(contentOf(folder / "new folder" / "file"), "content");
  EXPECT_EQ(namesIn(folder / "new folder"), Names{"file"});
  EXPECT_GE(interruptions[SystemCall::open], 2);
  EXPECT_EQ(interruptions[SystemCall::write], 3);
  EXPECT_EQ(interruptions[SystemCall::flush], 3);
}

// On Linux the descriptor is gone even so; closing it again could hit another thread's file.
TEST(ReplaceFile, takesAnInterruptedCloseForDone) {
  const TemporaryFolder folder;
  const SystemCallWatch watch(failing(SystemCall::close, false, EINTR));
  replaceFile(folder / "file", "content");
  EXPECT_EQ(contentOf(folder / "file"), "content");
}

// Whoever loses power between two steps must find the old or the new content.
TEST(ReplaceFile, flushesTheWholeContentBeforeAndTheFolderAfterItTakesThePlace) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  Names steps;
  {
    const SystemCallWatch watch([&](SystemCall call, int descriptor) {
      if (call != SystemCall::flush) return 0;
      const fs::path path = pathOf(descriptor);
      const std::string what = isFolder(descriptor) ? path.filename().string() : contentOf(path);
      steps.push_back("flush of " + what + " while the file is " + contentOf(folder / "file"));
      return 0;
    });
    replaceFile(folder / "file", "new");
  }
  EXPECT_EQ(steps,
            (Names{"flush of new while the file is old",
                   "flush of " + folder.path().filename().string() + " while the file is new"}));
}

TEST(ReplaceFileFolder, flushesTheFoldersInWhichItCreatesFolders) {
  const TemporaryFolder folder;
  Names flushed;
  {
    const SystemCallWatch watch([&](SystemCall call, int descriptor) {
      if (call == SystemCall::flush && isFolder(descriptor)) {
        flushed.push_back(pathOf(descriptor).filename());
      }
      return 0;
    });
    replaceFile(folder / "outer" / "inner" / "file", "content");
  }
  EXPECT_EQ(flushed, (Names{folder.path().filename(), "outer", "inner"}));
}

TEST(ReplaceFileFolder, leavesAFolderAloneThatSomebodyElseCreatesFirst) {
  const TemporaryFolder folder;
  {
    const SystemCallWatch watch([&](SystemCall call, int) {
      if (call == SystemCall::makeFolder) {
        fs::create_directory(folder / "new folder");
        fs::permissions(folder / "new folder", fs::perms(0755));
      }
      return 0;
    });
    replaceFile(folder / "new folder" / "file", "content");
  }
  EXPECT_EQ(contentOf(folder / "new folder" / "file"), "content");
  EXPECT_EQ(modeOf(folder / "new folder"), 0755u);
}

TEST(ReplaceFileFolder, reportsThatItCouldNotBeCreated) {
  const TemporaryFolder folder;
  const SystemCallWatch watch(
      [](SystemCall call, int) { return call == SystemCall::makeFolder ? EROFS : 0; });
  const auto error = fileErrorOf([&] { replaceFile(folder / "new folder" / "file", "content"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code(), std::errc::read_only_file_system);
  EXPECT_EQ(error->path(), folder / "new folder");
}

/// A call on the temporary file that fails, and the reason.
struct Fault {
  SystemCall call;
  int error;
};

class ReplaceFileFault : public testing::TestWithParam<Fault> {};

TEST_P(ReplaceFileFault, keepsTheOldContentAndLeavesNoTemporaryFile) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  std::error_code code;
  {
    const SystemCallWatch watch(failing(GetParam().call, false, GetParam().error));
    code = failureOf([&] { replaceFile(folder / "file", "new"); });
  }
  EXPECT_EQ(code, std::error_code(GetParam().error, std::generic_category()));
  EXPECT_EQ(contentOf(folder / "file"), "old");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

INSTANTIATE_TEST_SUITE_P(
    OfTheTemporaryFile, ReplaceFileFault,
    testing::Values(Fault{SystemCall::write, ENOSPC}, Fault{SystemCall::write, EIO},
                    Fault{SystemCall::flush, EIO}, Fault{SystemCall::flush, EINVAL},
                    Fault{SystemCall::close, EIO}, Fault{SystemCall::close, EDQUOT}));

TEST(ReplaceFileFailure, keepsTheOldContentWhenTheDiskIsFullHalfway) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  {
    const SystemCallWatch watch(
        [writes = 0](SystemCall call, int) mutable {
          return call == SystemCall::write && ++writes > 2 ? ENOSPC : 0;
        },
        3);
    EXPECT_EQ(failureOf([&] { replaceFile(folder / "file", "new content"); }),
              std::errc::no_space_on_device);
  }
  EXPECT_EQ(contentOf(folder / "file"), "old");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

/// What a save of "new" over "old" comes to when one of the calls that open something fails.
struct SaveWithOpenFault {
  explicit SaveWithOpenFault(int position) {
    const TemporaryFolder folder;
    put(folder / "file", "old");
    {
      const SystemCallWatch watch([this, position](SystemCall call, int) {
        return call == SystemCall::open && opens++ == position ? EMFILE : 0;
      });
      code = failureOf([&] { replaceFile(folder / "file", "new"); });
    }
    content = contentOf(folder / "file");
    names = namesIn(folder.path());
  }

  int opens = 0;
  std::error_code code;
  std::string content;
  Names names;
};

TEST(ReplaceFileFailure, keepsTheOldContentWhicheverOpenFails) {
  const int opens = SaveWithOpenFault(-1).opens;
  int failures = 0;
  for (int position = 0; position < opens; ++position) {
    const SaveWithOpenFault save(position);
    if (save.code) ++failures;
    EXPECT_EQ(save.content, save.code ? "old" : "new") << position;
    EXPECT_EQ(save.names, Names{"file"}) << position;
  }
  // The folder, the temporary file, and the list of left-overs, without which a save goes on.
  EXPECT_EQ(opens, 3);
  EXPECT_EQ(failures, 2);
}

TEST(ReplaceFileFolder, isFineWhereFoldersCannotBeFlushed) {
  const TemporaryFolder folder;
  const SystemCallWatch watch(failing(SystemCall::flush, true, EINVAL));
  replaceFile(folder / "new folder" / "file", "content");
  EXPECT_EQ(contentOf(folder / "new folder" / "file"), "content");
}

TEST(ReplaceFileFolder, reportsThatItCouldNotBeFlushed) {
  const TemporaryFolder folder;
  put(folder / "file", "old");
  std::optional<FileError> error;
  {
    const SystemCallWatch watch(failing(SystemCall::flush, true, EIO));
    error = fileErrorOf([&] { replaceFile(folder / "file", "new"); });
  }
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code(), std::errc::io_error);
  EXPECT_EQ(error->path(), folder.path());
  EXPECT_EQ(contentOf(folder / "file"), "new");
  EXPECT_EQ(namesIn(folder.path()), Names{"file"});
}

TEST(ReplaceFile, closesEverythingThatItOpens) {
  const TemporaryFolder folder;
  const auto openDescriptors = [] { return namesIn("/proc/self/fd").size(); };
  const auto before = openDescriptors();
  replaceFile(folder / "new folder" / "file", "content");
  fs::create_directory(folder / "folder");
  EXPECT_THROW(replaceFile(folder / "folder", "content"), FileError);
  EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace trellivar
