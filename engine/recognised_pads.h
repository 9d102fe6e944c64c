#pragma once

#include "engine/connected_device.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

/// The devices that are known pads, by identity or name, in the order given; of several that are
/// the same model only the first, since one pad may be there under several identities.
std::vector<ConnectedDevice> recognisedPads(std::span<const ConnectedDevice> devices);

/// Whether the registry knows the device's identity as that of a pad on the cable.
bool isOnCable(const ConnectedDevice& device);

} // namespace trellivar
