#pragma once

#include <compare>
#include <cstddef>
#include <functional>

namespace trellivar {

/// The USB or Bluetooth vendor and product id under which a device presents itself.
struct DeviceIdentity {
  int vendorId = 0;
  int productId = 0;

  friend auto operator<=>(const DeviceIdentity&, const DeviceIdentity&) = default;
};

} // namespace trellivar

template <> struct std::hash<trellivar::DeviceIdentity> {
  std::size_t operator()(const trellivar::DeviceIdentity& identity) const noexcept {
    return std::hash<int>{}(identity.vendorId) * 31 + std::hash<int>{}(identity.productId);
  }
};
