#include "viewmodels/profile_list_view_model.h"

#include "core/json/decoding_error.h"
#include "core/mode_profiles.h"
#include "files/set_aside.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace trellivar {

namespace {

bool holdsEveryMode(std::span<const Profile> profiles) {
  return std::ranges::all_of(modeNames, [&](std::string_view name) {
    return std::ranges::find(profiles, name, &Profile::name) != profiles.end();
  });
}

template <class Value, class Field>
const Profile* find(const std::vector<Profile>& profiles, const Value& value, Field field) {
  const auto found = std::ranges::find(profiles, value, field);
  return found == profiles.end() ? nullptr : &*found;
}

/// "is kept as FILE", since the file is about to be replaced.
std::string setAsideIfPossible(const ProfileStore& store) {
  try {
    return "is kept as " + setAside(store.profilesFile()).string();
  } catch (const std::exception& error) {
    return std::string("could not be kept: ") + error.what();
  }
}

/// What was wrong with the file, with its name in front.
std::string reason(const ProfileStore& store, const std::exception& error) {
  const bool isContent = dynamic_cast<const DecodingError*>(&error) != nullptr;
  return isContent ? store.profilesFile().string() + ":" + error.what() : error.what();
}

std::vector<Profile> loadOrNothing(const ProfileStore& store, const Report& report) {
  try {
    return store.load();
  } catch (const std::exception& error) {
    report("the profiles cannot be read: " + reason(store, error) +
           "; the file counts as empty and " + setAsideIfPossible(store));
    return {};
  }
}

} // namespace

ProfileListViewModel::ProfileListViewModel(const ProfileStore& store, const Report& report)
    : ProfileListViewModel(store, loadOrNothing(store, report), report) {}

ProfileListViewModel::ProfileListViewModel(std::optional<ProfileStore> store,
                                           std::span<const Profile> loaded, Report report)
    : store_(std::move(store)), report_(std::move(report)), profiles_(migrated(loaded)) {
  if (!std::ranges::equal(*profiles_, loaded, {}, &Profile::id, &Profile::id)) {
    keepLegacy(loaded);
    save();
  }
  activeId_.set(profile(modeNames.front())->id);
}

std::vector<Profile> ProfileListViewModel::migrated(std::span<const Profile> from) {
  if (holdsEveryMode(from)) return {from.begin(), from.end()};
  std::vector<Profile> modes;
  for (const std::string_view name : modeNames)
    modes.push_back({UUID::random(), std::string(name), {}});
  if (!from.empty()) modes.front().mappings = from.front().mappings;
  return modes;
}

const Profile* ProfileListViewModel::active() const {
  return *activeId_ ? find(*profiles_, **activeId_, &Profile::id) : nullptr;
}

const Profile* ProfileListViewModel::profile(std::string_view named) const {
  return find(*profiles_, named, &Profile::name);
}

void ProfileListViewModel::add(std::string named) {
  auto profiles = *profiles_;
  profiles.push_back({UUID::random(), std::move(named), {}});
  profiles_.set(std::move(profiles));
  save();
}

void ProfileListViewModel::update(const Profile& profile) {
  auto profiles = *profiles_;
  const auto same = std::ranges::find(profiles, profile.id, &Profile::id);
  if (same == profiles.end()) return;
  *same = profile;
  profiles_.set(std::move(profiles));
  save();
}

void ProfileListViewModel::setActive(UUID id) {
  if (find(*profiles_, id, &Profile::id)) activeId_.set(id);
}

/// Without a backup, the file itself is kept under another name.
void ProfileListViewModel::keepLegacy(std::span<const Profile> loaded) const {
  if (!store_ || store_->saveLegacyBackup(loaded)) return;
  std::string what = "the backup " + store_->legacyBackupFile().string() + " cannot be written";
  if (!loaded.empty())
    what += "; " + store_->profilesFile().string() + " " + setAsideIfPossible(*store_);
  report_(what);
}

void ProfileListViewModel::save() const {
  if (!store_) return;
  try {
    store_->save(*profiles_);
  } catch (const std::exception& error) {
    report_(error.what());
  }
}

} // namespace trellivar
