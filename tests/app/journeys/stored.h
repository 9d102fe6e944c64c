#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace trellivar {

/// What the profile of a mode binds, as it is on the disk: "1 left_command+c, 2 mute:media = Quiet"
/// for a chord on key 1 and a media key on key 2 that is called Quiet. A sequence is in brackets.
std::string storedBindings(const std::filesystem::path& folder, std::string_view mode);

/// The learned keys on the disk: "M 1 left_option+1" for each; "?" where no mode is told.
std::string storedSignatures(const std::filesystem::path& folder);

} // namespace trellivar
