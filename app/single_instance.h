#pragma once

#include "app/folder_lock.h"

#include <QLocalServer>
#include <chrono>
#include <filesystem>
#include <functional>

namespace trellivar {

/// Sees to it that a single process works on a data folder. Main thread.
class SingleInstance {
public:
  /// Takes the data folder. If a process has it already, that one is called instead, as soon as it
  /// listens. Throws FileError where the folder cannot be written, std::runtime_error when whoever
  /// has it does not answer in time.
  explicit SingleInstance(const std::filesystem::path& dataFolder,
                          std::chrono::milliseconds patience = std::chrono::seconds(10));

  /// Otherwise another process has answered, and there is nothing to do here.
  bool isFirst() const { return lock_.isHeld(); }

  /// From now on `called` runs, on the loop, each time that the application is started on the same
  /// data folder.
  void listen(std::function<void()> called);

private:
  void answer();

  FolderLock lock_;
  QString address_;
  QLocalServer server_;
  std::function<void()> called_;
};

} // namespace trellivar
