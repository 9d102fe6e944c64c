#include "engine/connected_device.h"

namespace trellivar {

TrellivarDevice ConnectedDevice::asTrellivarDevice(int keyCount) const {
  TrellivarDevice device{name, vendorId, productId, {}};
  for (int id = 1; id <= keyCount; ++id)
    device.layout.keys.push_back({.id = id, .row = 0, .col = id - 1, .signature = {}});
  return device;
}

} // namespace trellivar
