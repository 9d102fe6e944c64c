#pragma once

#include "core/device_identity.h"
#include "core/key_event.h"

namespace trellivar {

/// A recorded press or release with the device that it came from.
struct DeviceKeyEvent {
  KeyEvent event;
  int vendorId = 0;  ///< 0 when the device does not tell
  int productId = 0; ///< 0 when the device does not tell

  DeviceIdentity identity() const noexcept { return {vendorId, productId}; }

  friend bool operator==(const DeviceKeyEvent&, const DeviceKeyEvent&) = default;
};

} // namespace trellivar
