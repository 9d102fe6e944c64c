#pragma once

#include "core/trellivar_device.h"

#include <string>

namespace trellivar {

/// An attached keyboard or pad.
struct ConnectedDevice {
  std::string name;           ///< shown to people
  std::string enumeratedName; ///< exactly as the device gives it; empty when it does not
  int vendorId = 0;
  int productId = 0;

  /// What tells devices apart; one device has one.
  DeviceIdentity id() const noexcept { return {vendorId, productId}; }

  /// The device as a pad whose keys 1 to `keyCount` stand in one row and are yet to be learned.
  TrellivarDevice asTrellivarDevice(int keyCount) const;

  friend bool operator==(const ConnectedDevice&, const ConnectedDevice&) = default;
};

} // namespace trellivar
