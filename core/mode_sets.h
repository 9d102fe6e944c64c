#pragma once

#include "core/profile.h"
#include "core/stored_signatures.h"

#include <set>
#include <span>
#include <string>
#include <vector>

namespace trellivar {

/// The registry's pad on the first transport of its primary mode: what is worked on until a pad is
/// attached.
TrellivarDevice initialDevice();

/// What the engine is to remap: the sets for every position of the pad's switch at once, although
/// one profile and one device are being worked on. A profile belongs to the mode whose id its name
/// is.
///
/// The profile of the device's own mode is bound to `device` as it is, the profiles of other modes
/// to the registry's devices of those modes with what has been learned about them. A profile of
/// which no mode of the pad knows is left out; a device that is no known pad gets every profile.
/// For modes in `portableModes`, whose bindings the pad's firmware holds, portable sets are added.
std::vector<MappingSet> setsForAllModes(const TrellivarDevice& device,
                                        std::span<const Profile> profiles,
                                        std::span<const StoredDeviceSignatures> stored,
                                        const std::set<std::string>& portableModes);

} // namespace trellivar
