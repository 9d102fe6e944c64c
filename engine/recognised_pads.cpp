#include "engine/recognised_pads.h"

#include "core/known_devices.h"

#include <algorithm>
#include <set>

namespace trellivar {

std::vector<ConnectedDevice> recognisedPads(std::span<const ConnectedDevice> devices) {
  std::vector<ConnectedDevice> pads;
  std::set<std::string> models;
  for (const ConnectedDevice& device : devices) {
    const auto found = KnownDevices::resolve(device.vendorId, device.productId, device.name);
    if (found && models.insert(found->device->name).second) pads.push_back(device);
  }
  return pads;
}

bool isOnCable(const ConnectedDevice& device) {
  const KnownDevice* pad = KnownDevices::knownAcrossModes(device.vendorId, device.productId);
  return pad && std::ranges::any_of(pad->modes, [&](const KnownMode& mode) {
           const KnownTransport* found = mode.transport(device.vendorId, device.productId);
           return found && found->isUSB;
         });
}

} // namespace trellivar
