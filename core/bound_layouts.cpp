#include "core/bound_layouts.h"

#include "core/known_devices.h"

namespace trellivar {

std::vector<BoundLayout> boundLayouts(const TrellivarDevice& device) {
  const KnownDevice* pad = KnownDevices::known(device.vendorId, device.productId);
  if (!pad) return {{device.identity(), &device.layout}};
  std::vector<BoundLayout> result;
  for (const KnownTransport& transport : pad->primaryMode()->transports)
    result.push_back({transport.identity, &transport.layout});
  return result;
}

} // namespace trellivar
