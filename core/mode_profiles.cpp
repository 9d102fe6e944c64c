#include "core/mode_profiles.h"

#include <algorithm>
#include <exception>
#include <string>

namespace trellivar {

namespace {

bool holdsEveryMode(std::span<const Profile> profiles) {
  return std::ranges::all_of(modeNames, [&](std::string_view name) {
    return std::ranges::find(profiles, name, &Profile::name) != profiles.end();
  });
}

} // namespace

std::vector<Profile> migrated(std::span<const Profile> from) {
  if (holdsEveryMode(from)) return {from.begin(), from.end()};
  std::vector<Profile> modes;
  for (const std::string_view name : modeNames)
    modes.push_back({UUID::random(), std::string(name), {}});
  if (!from.empty()) modes.front().mappings = from.front().mappings;
  return modes;
}

std::vector<Profile> migrateAtStart(const ProfileStore& store, std::span<const Profile> loaded) {
  std::vector<Profile> profiles = migrated(loaded);
  if (std::ranges::equal(profiles, loaded, {}, &Profile::id, &Profile::id)) return profiles;
  store.saveLegacyBackup(loaded);
  try {
    store.save(profiles);
  } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): see the header
  }
  return profiles;
}

} // namespace trellivar
