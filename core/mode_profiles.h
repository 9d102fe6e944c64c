#pragma once

#include "core/profile.h"
#include "core/profile_store.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace trellivar {

/// The names of the profiles that belong to the pad's switch positions, in their order.
inline constexpr std::array<std::string_view, 3> modeNames{"P", "M", "R"};

/// The list in its mode form: unchanged when it holds a profile for each mode; otherwise three new
/// profiles, "P" with the mappings of the first old profile, "M" and "R" without. (Before there
/// were modes, one profile was all there was.)
std::vector<Profile> migrated(std::span<const Profile> from);

/// What every start does with the profiles it has loaded: migrates them and, when that changed the
/// list, keeps the old list in the backup file and saves the new one. Errors of saving are dropped.
/// The very first start thus writes three empty profiles and the backup of an empty list.
std::vector<Profile> migrateAtStart(const ProfileStore& store, std::span<const Profile> loaded);

} // namespace trellivar
