#pragma once

#include "core/instant.h"

#include <functional>
#include <optional>
#include <string>

namespace trellivar {

/// A device on which a key was pressed.
struct IdentifiedDevice {
  std::string name;   ///< "Unknown" when the device does not tell
  int vendorId = -1;  ///< -1 when the device does not tell
  int productId = -1; ///< -1 when the device does not tell

  friend bool operator==(const IdentifiedDevice&, const IdentifiedDevice&) = default;
};

/// Finds out on which device the user presses a key. Main thread.
class DeviceIdentifying {
public:
  using Completion = std::function<void(std::optional<IdentifiedDevice>)>;

  virtual ~DeviceIdentifying() = default;

  /// Waits for the next press of a key, on any keyboard. `completion` is called once, on the main
  /// thread, with none after `timeout`, unless the identifier is destroyed before. Waiting anew
  /// ends an earlier wait with none.
  virtual void identifyNextKeyDevice(Seconds timeout, Completion completion) = 0;

protected:
  DeviceIdentifying() = default;
  DeviceIdentifying(const DeviceIdentifying&) = default;
  DeviceIdentifying& operator=(const DeviceIdentifying&) = default;
};

/// Answers within the call.
class StubDeviceIdentifier final : public DeviceIdentifying {
public:
  void identifyNextKeyDevice(Seconds /*timeout*/, Completion completion) override {
    completion(result);
  }

  std::optional<IdentifiedDevice> result;
};

} // namespace trellivar
