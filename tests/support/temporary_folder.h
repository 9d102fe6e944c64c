#pragma once

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace trellivar {

/// Folders in memory, where there are any: everything that is saved is flushed to the disk.
inline std::filesystem::path quickFolder() {
  const std::filesystem::path memory = "/dev/shm";
  return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
}

/// A new, empty folder of its own for one test; removed with all that is in it.
class TemporaryFolder {
public:
  explicit TemporaryFolder(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path())
      : path_(create(parent)) {}
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored; // a destructor has nobody to tell
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const noexcept { return path_; }

private:
  static std::filesystem::path create(const std::filesystem::path& parent) {
    std::string name = (parent / "trellivar-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), name);
    }
    return name;
  }

  std::filesystem::path path_;
};

inline std::filesystem::path operator/(const TemporaryFolder& folder,
                                       const std::filesystem::path& name) {
  return folder.path() / name;
}

} // namespace trellivar
