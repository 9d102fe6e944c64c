#include "tests/files/system_call_watch.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <utility>

namespace trellivar {

namespace {

thread_local const SystemCallWatch* current = nullptr;

/// The function of this name that ours hides.
template <typename Function> Function* hidden(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// True if the call is to fail; `errno` is set then.
bool mustFail(SystemCall call, int descriptor) {
  if (current == nullptr) return false;
  const int error = current->decide(call, descriptor);
  if (error != 0) errno = error;
  return error != 0;
}

std::size_t limited(std::size_t size) {
  return current == nullptr ? size : std::min(size, current->mostBytesAtOnce());
}

/// The mode is passed only with the flags that create a file.
mode_t modeArgument(int flags, std::va_list arguments) {
  return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

SystemCallWatch::SystemCallWatch(Decision decision, std::size_t mostBytesAtOnce)
    : decision_(std::move(decision)), mostBytesAtOnce_(mostBytesAtOnce) {
  current = this;
}

SystemCallWatch::~SystemCallWatch() { current = nullptr; }

int SystemCallWatch::decide(SystemCall call, int descriptor) const {
  current = nullptr;
  const int error = decision_(call, descriptor);
  current = this;
  return error;
}

} // namespace trellivar

// The definitions of a program come before those of the libraries that it uses.
extern "C" {

int open(const char* path, int flags, ...) {
  static auto* const real = trellivar::hidden<int(const char*, int, ...)>("open");
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = trellivar::modeArgument(flags, arguments);
  va_end(arguments);
  return trellivar::mustFail(trellivar::SystemCall::open, -1) ? -1 : real(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  static auto* const real = trellivar::hidden<int(int, const char*, int, ...)>("openat");
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = trellivar::modeArgument(flags, arguments);
  va_end(arguments);
  return trellivar::mustFail(trellivar::SystemCall::open, -1) ? -1
                                                              : real(folder, path, flags, mode);
}

int mkdir(const char* path, mode_t mode) noexcept {
  static auto* const real = trellivar::hidden<int(const char*, mode_t)>("mkdir");
  return trellivar::mustFail(trellivar::SystemCall::makeFolder, -1) ? -1 : real(path, mode);
}

int fchmod(int descriptor, mode_t mode) noexcept {
  static auto* const real = trellivar::hidden<int(int, mode_t)>("fchmod");
  if (trellivar::mustFail(trellivar::SystemCall::changeMode, descriptor)) return -1;
  return real(descriptor, mode);
}

ssize_t read(int descriptor, void* buffer, std::size_t size) {
  static auto* const real = trellivar::hidden<ssize_t(int, void*, std::size_t)>("read");
  if (trellivar::mustFail(trellivar::SystemCall::read, descriptor)) return -1;
  return real(descriptor, buffer, trellivar::limited(size));
}

ssize_t write(int descriptor, const void* buffer, std::size_t size) {
  static auto* const real = trellivar::hidden<ssize_t(int, const void*, std::size_t)>("write");
  if (trellivar::mustFail(trellivar::SystemCall::write, descriptor)) return -1;
  return real(descriptor, buffer, trellivar::limited(size));
}

int fsync(int descriptor) {
  static auto* const real = trellivar::hidden<int(int)>("fsync");
  return trellivar::mustFail(trellivar::SystemCall::flush, descriptor) ? -1 : real(descriptor);
}

int close(int descriptor) {
  static auto* const real = trellivar::hidden<int(int)>("close");
  const bool failing = trellivar::mustFail(trellivar::SystemCall::close, descriptor);
  const int error = errno;
  const int result = real(descriptor);
  if (!failing) return result;
  errno = error;
  return -1;
}
}
