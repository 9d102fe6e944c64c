#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace trellivar {

/// The file by which desktops of Linux start the application at login.
class AutostartEntry {
public:
  /// `folder` is "autostart" in the user's configuration.
  explicit AutostartEntry(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::filesystem::path file() const { return folder_ / "trellivar.desktop"; }

  /// `command` is the program with its arguments. Throws FileError.
  void install(std::span<const std::string> command) const;
  /// Throws std::filesystem::filesystem_error.
  void remove() const { std::filesystem::remove(file()); }

private:
  std::filesystem::path folder_;
};

} // namespace trellivar
