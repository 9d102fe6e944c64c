#pragma once

#include <filesystem>
#include <string>

namespace trellivar {

/// The file by which desktops of Linux start the application at login.
class AutostartEntry {
public:
  /// `folder` is "autostart" in the user's configuration.
  explicit AutostartEntry(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::filesystem::path file() const { return folder_ / "trellivar.desktop"; }

  /// Writes or removes the entry. Throws FileError or std::filesystem::filesystem_error.
  void set(bool enabled, const std::string& program) const;

private:
  std::filesystem::path folder_;
};

} // namespace trellivar
