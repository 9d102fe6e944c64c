#pragma once

#include "cli/context.h"
#include "core/profile.h"
#include "core/profile_store.h"
#include "core/signature_store.h"
#include "viewmodels/profile_list_view_model.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar::cli {

/// The folder that --data-dir names, else "Library/Application Support/Trellivar" in the user's
/// home folder. Throws BadInput for an empty name; Failure without a home, and where a file is in
/// the way.
std::filesystem::path dataFolder(const Context& context);

/// The profiles as they are stored. A file that cannot be read is left alone: throws BadInput that
/// says where it is wrong.
std::vector<Profile> loadProfiles(const ProfileStore& store);

/// The learned keys as they are stored, with the same refusal.
std::vector<StoredDeviceSignatures> loadSignatures(const SignatureStore& store);

/// The list of the application, after the sequence that every start runs on it. `report` takes the
/// failures to save it.
ProfileListViewModel openProfiles(const ProfileStore& store, Report report = debugLog);

/// A list of profiles from a file of the user's. Throws BadInput, Failure.
std::vector<Profile> readProfiles(Context& context, const std::string& file);

} // namespace trellivar::cli
