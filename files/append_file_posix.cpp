#include "files/append_file.h"
#include "files/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace trellivar {

namespace {

int openForAppending(const char* path) noexcept {
  // Without O_NONBLOCK, opening a pipe that someone left there would wait for its reader.
  constexpr int flags = O_WRONLY | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  constexpr mode_t readableByEveryone = 0644;
  const int existing = open(path, flags);
  if (existing >= 0 || errno != ENOENT) return existing;
  return open(path, flags | O_CREAT, readableByEveryone);
}

/// A file with a second name may be somebody's document, linked to where the log is expected.
bool isPlainFile(int descriptor) noexcept {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1;
}

} // namespace

bool appendToFile(const std::filesystem::path& path, std::string_view bytes) noexcept {
  const FileDescriptor file(openForAppending(path.c_str()));
  if (!file.isOpen() || !isPlainFile(file.get())) return false;
  return write(file.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

} // namespace trellivar
