#pragma once

#include <utility>

namespace trellivar {

/// Owns an open file descriptor and closes it. Who needs to know whether closing succeeded takes it
/// back with `release()`.
class FileDescriptor {
public:
  /// A negative number, as the system returns it on failure, stands for "not open".
  explicit FileDescriptor(int number) noexcept : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(other.release()) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    FileDescriptor taken(std::move(other));
    std::swap(number_, taken.number_);
    return *this;
  }
  ~FileDescriptor();

  bool isOpen() const noexcept { return number_ >= 0; }
  int get() const noexcept { return number_; }
  int release() noexcept { return std::exchange(number_, -1); }

private:
  int number_;
};

} // namespace trellivar
