#pragma once

#include "core/profile.h"

#include <filesystem>
#include <span>
#include <vector>

namespace trellivar {

/// The user's profiles in one file of the data folder. Holds no cache: every load reads the file,
/// every save replaces it whole, atomically and durably.
class ProfileStore {
public:
  explicit ProfileStore(std::filesystem::path directory);

  const std::filesystem::path& directory() const noexcept { return directory_; }
  std::filesystem::path profilesFile() const { return directory_ / "profiles.json"; }
  std::filesystem::path legacyBackupFile() const {
    return directory_ / "profiles-legacy-backup.json";
  }

  /// The stored list; empty when there is no file yet. Throws FileError when the file cannot be
  /// read, DecodingError when it is not a list of profiles.
  std::vector<Profile> load() const;

  /// Creates the folder if needed. Throws FileError; the previous file is then intact.
  void save(std::span<const Profile> profiles) const;

  /// Keeps profiles as they were before a migration. Best effort: answers whether it could.
  bool saveLegacyBackup(std::span<const Profile> profiles) const noexcept;

private:
  std::filesystem::path directory_;
};

} // namespace trellivar
