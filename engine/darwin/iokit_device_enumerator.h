#pragma once

#include "engine/device_enumerating.h"

namespace trellivar {

/// Lists the HID devices of the I/O registry; needs no permission.
class IOKitDeviceEnumerator final : public DeviceEnumerating {
public:
  /// Sorted by name, then by identity.
  std::vector<ConnectedDevice> connectedKeyboards() override;

  /// Whether a device with this primary usage and identity belongs into the list: keyboards do, and
  /// pads that are known in any mode, whatever they say that they are.
  static bool shouldInclude(int usagePage, int usage, int vendorId, int productId);
};

} // namespace trellivar
