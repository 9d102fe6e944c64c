#pragma once

#include "core/profile_store.h"
#include "engine/log.h"
#include "viewmodels/published.h"
#include "viewmodels/report.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace trellivar {

/// The profiles and which of them is the active one. Every change is saved at once, the whole list;
/// errors of the store are only reported. Main thread.
class ProfileListViewModel {
public:
  /// Loads, and runs the sequence of every start: the list is migrated and, when that changed it,
  /// saved after the old list has been kept in the backup file. The very first start thus writes
  /// three empty profiles and the backup of an empty list. A file that cannot be read counts as an
  /// empty list; it is set aside before another takes its place, and so is a list that cannot be
  /// backed up.
  explicit ProfileListViewModel(const ProfileStore& store, const Report& report = debugLog);
  /// The same for a list that has been loaded already. Without a store it is kept nowhere.
  ProfileListViewModel(std::optional<ProfileStore> store, std::span<const Profile> loaded,
                       Report report = debugLog);
  ProfileListViewModel(const ProfileListViewModel&) = delete;
  ProfileListViewModel& operator=(const ProfileListViewModel&) = delete;

  const Published<std::vector<Profile>>& profiles() const noexcept { return profiles_; }
  /// After construction that of the profile "P".
  const Published<std::optional<UUID>>& activeId() const noexcept { return activeId_; }
  /// Null when no profile has the active id.
  const Profile* active() const;
  /// The first profile with this name; null without one.
  const Profile* profile(std::string_view named) const;

  /// Appends an empty profile.
  void add(std::string named);
  /// Replaces the profile that has the same id; without one the list stays as it is.
  void update(const Profile& profile);
  /// Ignored when no profile has the id.
  void setActive(UUID id);

  /// The list in its mode form: unchanged when it holds a profile for each mode; otherwise three
  /// new profiles, "P" with the mappings of the first old profile, "M" and "R" without. (Before
  /// there were modes, one profile was all there was.)
  static std::vector<Profile> migrated(std::span<const Profile> from);

private:
  void keepLegacy(std::span<const Profile> loaded) const;
  void save() const;

  std::optional<ProfileStore> store_;
  Report report_;
  Published<std::vector<Profile>> profiles_;
  Published<std::optional<UUID>> activeId_;
};

} // namespace trellivar
