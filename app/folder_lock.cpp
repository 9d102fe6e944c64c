#include "app/folder_lock.h"

#include "files/durable_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace trellivar {

namespace {

namespace fs = std::filesystem;

constexpr mode_t privateFolderMode = 0700;
constexpr mode_t privateFileMode = 0600;

[[noreturn]] void fail(const fs::path& path) {
  throw FileError(path, {errno, std::generic_category()});
}

void create(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder.parent_path(), error);
  if (error) throw FileError(folder.parent_path(), error);
  if (::mkdir(folder.c_str(), privateFolderMode) != 0 && errno != EEXIST) fail(folder);
}

/// The lock's file alone does not tell: it may be there from a time when the folder was open.
void requireWritable(const fs::path& folder) {
  if (!fs::is_directory(folder))
    throw FileError(folder, std::make_error_code(std::errc::not_a_directory));
  if (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) fail(folder);
}

int openLock(const fs::path& folder) {
  create(folder);
  requireWritable(folder);
  const fs::path file = folder / "trellivar.lock";
  const int number =
      ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, privateFileMode);
  if (number < 0) fail(file);
  return number;
}

} // namespace

FolderLock::FolderLock(const fs::path& folder) : file_(openLock(folder)) {}

bool FolderLock::tryToTake() {
  isHeld_ = isHeld_ || ::flock(file_.get(), LOCK_EX | LOCK_NB) == 0;
  return isHeld_;
}

} // namespace trellivar
