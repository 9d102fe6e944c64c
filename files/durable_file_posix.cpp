#include "files/durable_file.h"
#include "files/file_descriptor.h"
#include "files/temporary_name.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <memory>

namespace trellivar {

namespace {

namespace fs = std::filesystem;

constexpr int mostLinks = 40;
constexpr mode_t privateFileMode = 0600;
constexpr mode_t privateFolderMode = 0700;
constexpr mode_t ordinaryFolderMode = 0777;

/// macOS refuses to write 2 GiB or more at once.
constexpr std::size_t largestWrite = std::size_t{1} << 30;

std::error_code lastError() { return {errno, std::generic_category()}; }

[[noreturn]] void fail(const fs::path& path) { throw FileError(path, lastError()); }

[[noreturn]] void fail(const fs::path& path, std::errc reason) {
  throw FileError(path, std::make_error_code(reason));
}

/// Repeats a system call for as long as signals interrupt it.
template <typename Call> auto uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR)
    result = call();
  return result;
}

/// The system's functions stop at the first zero byte, and so at a different file.
void requireNoZeroByte(const fs::path& path) {
  if (path.native().find('\0') != fs::path::string_type::npos) {
    fail(path, std::errc::invalid_argument);
  }
}

FileDescriptor open(const fs::path& path, int flags) {
  return FileDescriptor(
      uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY); }));
}

FileDescriptor openFolder(const fs::path& folder) {
  FileDescriptor opened = open(folder, O_RDONLY | O_DIRECTORY);
  if (!opened.isOpen()) fail(folder);
  return opened;
}

// Reading

void requireRegularFile(const FileDescriptor& file, const fs::path& path) {
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) fail(path);
  if (S_ISDIR(status.st_mode)) fail(path, std::errc::is_a_directory);
  if (!S_ISREG(status.st_mode)) fail(path, std::errc::operation_not_supported);
}

std::string readToEnd(const FileDescriptor& file, const fs::path& path) {
  std::string content;
  std::array<char, 65536> chunk;
  for (;;) {
    const ssize_t count =
        uninterrupted([&] { return ::read(file.get(), chunk.data(), chunk.size()); });
    if (count < 0) fail(path);
    if (count == 0) return content;
    content.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

// Flushing

int flush(const FileDescriptor& file) {
#ifdef F_FULLFSYNC
  // Here fsync stops at the cache of the drive. Not every file system offers more.
  if (uninterrupted([&] { return ::fcntl(file.get(), F_FULLFSYNC); }) != -1) return 0;
#endif
  return uninterrupted([&] { return ::fsync(file.get()); });
}

void flushFolder(const FileDescriptor& folder, const fs::path& path) {
  // Some file systems know no flushing of folders and say so with EINVAL.
  if (flush(folder) != 0 && errno != EINVAL) fail(path);
}

// Finding the place

/// The path at the end of a chain of symbolic links, whether or not there is a file.
fs::path followLinks(const fs::path& path) {
  fs::path current = path;
  for (int followed = 0; followed <= mostLinks; ++followed) {
    std::error_code code;
    const fs::path next = fs::read_symlink(current, code);
    if (code == std::errc::invalid_argument) return current; // exists and is no link
    if (code == std::errc::no_such_file_or_directory) return current;
    if (code) throw FileError(current, code);
    current = current.parent_path() / next;
  }
  fail(path, std::errc::too_many_symbolic_link_levels);
}

void requireFileName(const fs::path& path) {
  if (path.empty()) fail(path, std::errc::no_such_file_or_directory);
  const fs::path name = path.filename();
  if (name.empty() || name == "." || name == "..") fail(path, std::errc::is_a_directory);
}

fs::path folderOf(const fs::path& path) {
  fs::path folder = path.parent_path();
  while (folder.filename() == ".")
    folder = folder.parent_path();
  return folder.empty() ? fs::path(".") : folder;
}

bool folderExists(const fs::path& folder) {
  struct stat status {};
  if (::stat(folder.c_str(), &status) == 0) {
    if (!S_ISDIR(status.st_mode)) fail(folder, std::errc::not_a_directory);
    return true;
  }
  if (errno != ENOENT) fail(folder);
  return false;
}

/// True if it was created here; false if another process was quicker.
bool makeFolder(const fs::path& folder, mode_t mode) {
  if (::mkdir(folder.c_str(), mode) == 0) return true;
  if (errno != EEXIST) fail(folder);
  return false;
}

void createParentFolders(const fs::path& path);

void createFolder(const fs::path& folder, mode_t mode) {
  createParentFolders(folder);
  if (!makeFolder(folder, mode)) return;
  // The umask may have taken away what the owner of a private folder needs.
  if (mode == privateFolderMode && ::chmod(folder.c_str(), mode) != 0) fail(folder);
  const fs::path parent = folderOf(folder);
  flushFolder(openFolder(parent), parent);
}

void createParentFolders(const fs::path& path) {
  const fs::path folder = folderOf(path);
  if (!folderExists(folder)) createFolder(folder, ordinaryFolderMode);
}

/// The file to be replaced. Its folder is held open, so that all steps happen in the same folder
/// even when somebody renames it meanwhile.
struct Destination {
  fs::path path;
  std::string name;
  fs::path folderPath;
  FileDescriptor folder;
};

Destination openDestination(const fs::path& path) {
  const fs::path target = followLinks(path);
  requireFileName(target);
  const fs::path folder = folderOf(target);
  if (!folderExists(folder)) createFolder(folder, privateFolderMode);
  return {target, target.filename().string(), folder, openFolder(folder)};
}

/// Pipes and devices would be renamed away like any file. Folders the system refuses by itself.
void requireReplaceable(const Destination& destination) {
  struct stat status {};
  if (::fstatat(destination.folder.get(), destination.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) !=
      0) {
    if (errno == ENOENT) return;
    fail(destination.path);
  }
  if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
    fail(destination.path, std::errc::operation_not_supported);
  }
}

// Left-overs

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};
using FolderListing = std::unique_ptr<DIR, CloseFolder>;

/// Null when the folder cannot be listed.
FolderListing list(const FileDescriptor& folder) {
  FileDescriptor own(::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!own.isOpen()) return nullptr;
  FolderListing listing(::fdopendir(own.get()));
  if (listing) own.release(); // the listing closes it from here on
  return listing;
}

bool isRunning(pid_t process) { return ::kill(process, 0) == 0 || errno != ESRCH; }

bool isRegularFile(const FileDescriptor& folder, const char* name) {
  struct stat status {};
  return ::fstatat(folder.get(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
         S_ISREG(status.st_mode);
}

bool isLeftOver(const Destination& destination, const char* name) {
  const auto temporary = TemporaryName::parse(name, destination.name);
  return temporary && !isRunning(temporary->process) && isRegularFile(destination.folder, name);
}

/// Removes what killed processes left behind. It is tidying: a file that cannot be removed stays.
void removeLeftOvers(const Destination& destination) {
  const FolderListing listing = list(destination.folder);
  if (!listing) return;
  // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody else reads this listing
  while (const dirent* entry = ::readdir(listing.get())) {
    if (isLeftOver(destination, entry->d_name)) {
      ::unlinkat(destination.folder.get(), entry->d_name, 0);
    }
  }
}

// Writing

/// A new file beside the destination that vanishes unless it takes the destination's place.
class TemporaryFile {
public:
  explicit TemporaryFile(const Destination& destination) : destination_(destination) {
    do {
      name_ = TemporaryName::next().text(destination.name);
      create();
      // An earlier process of the same number may have been killed and left its file.
    } while (!file_.isOpen() && errno == EEXIST);
    if (!file_.isOpen()) fail(destination_.path);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!moved_) ::unlinkat(destination_.folder.get(), name_.c_str(), 0);
  }

  void write(std::string_view content) {
    setMode();
    while (!content.empty())
      content.remove_prefix(writeSome(content));
    if (flush(file_) != 0) fail(destination_.path);
    close();
  }

  void takePlace() {
    const int folder = destination_.folder.get();
    if (::renameat(folder, name_.c_str(), folder, destination_.name.c_str()) != 0) {
      fail(destination_.path);
    }
    moved_ = true;
  }

private:
  void create() {
    file_ = FileDescriptor(uninterrupted([&] {
      return ::openat(destination_.folder.get(), name_.c_str(),
                      O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFileMode);
    }));
  }

  /// Gives back what the umask took away.
  void setMode() {
    if (::fchmod(file_.get(), privateFileMode) != 0) fail(destination_.path);
  }

  std::size_t writeSome(std::string_view content) {
    const std::size_t size = std::min(content.size(), largestWrite);
    const ssize_t count = uninterrupted([&] { return ::write(file_.get(), content.data(), size); });
    if (count < 0) fail(destination_.path);
    return static_cast<std::size_t>(count);
  }

  /// Some network file systems report only here that the content was not stored. When interrupted,
  /// the descriptor is gone all the same and must not be closed again.
  void close() {
    if (::close(file_.release()) != 0 && errno != EINTR) fail(destination_.path);
  }

  const Destination& destination_;
  std::string name_;
  FileDescriptor file_{-1};
  bool moved_ = false;
};

} // namespace

FileError::FileError(const fs::path& path, std::error_code code)
    : std::runtime_error(path.string() + ": " + code.message()), path_(path), code_(code) {}

std::optional<std::string> readFile(const fs::path& path) {
  requireNoZeroByte(path);
  // Without O_NONBLOCK, opening a pipe waits until somebody writes to it.
  const FileDescriptor file = open(path, O_RDONLY | O_NONBLOCK);
  if (!file.isOpen()) {
    if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
    fail(path);
  }
  requireRegularFile(file, path);
  return readToEnd(file, path);
}

void replaceFile(const fs::path& path, std::string_view content) {
  requireNoZeroByte(path);
  const Destination destination = openDestination(path);
  requireReplaceable(destination);
  removeLeftOvers(destination);

  TemporaryFile temporary(destination);
  temporary.write(content);
  temporary.takePlace();
  flushFolder(destination.folder, destination.folderPath);
}

} // namespace trellivar
