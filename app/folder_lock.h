#pragma once

#include "files/file_descriptor.h"

#include <filesystem>

namespace trellivar {

/// Held by one process at a time, in a file "trellivar.lock" in the folder. The system lets go of
/// it when the process ends, however it ends; the file stays.
class FolderLock {
public:
  /// Makes sure of a folder that can be written, which is created with mode 0700 if it is missing.
  /// Throws FileError where that is impossible.
  explicit FolderLock(const std::filesystem::path& folder);

  /// Takes the lock unless another process holds it; answers whether it is held here.
  bool tryToTake();
  bool isHeld() const { return isHeld_; }

private:
  FileDescriptor file_;
  bool isHeld_ = false;
};

} // namespace trellivar
