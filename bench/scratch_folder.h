#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

namespace trellivar::bench {

/// A folder that ends with the object.
class ScratchFolder {
public:
  /// In memory where there is such a place, so that flushing to disk costs nothing.
  static ScratchFolder inMemory() {
    const std::filesystem::path memory = "/dev/shm";
    return ScratchFolder(exists(memory) ? memory : std::filesystem::temp_directory_path());
  }
  /// Where the program was started, which is on a disk as a rule.
  static ScratchFolder onDisk() { return ScratchFolder(std::filesystem::current_path()); }

  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() { std::filesystem::remove_all(path_); }

  const std::filesystem::path& path() const noexcept { return path_; }

private:
  explicit ScratchFolder(const std::filesystem::path& base)
      : path_(base / ("trellivar-bench-" + std::to_string(getpid()))) {}

  std::filesystem::path path_;
};

} // namespace trellivar::bench
