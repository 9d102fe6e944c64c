#pragma once

#include "engine/connected_device.h"

#include <vector>

namespace trellivar {

/// Lists what is attached. Main thread.
class DeviceEnumerating {
public:
  virtual ~DeviceEnumerating() = default;

  /// Keyboards and known pads, each vendor and product pair once.
  virtual std::vector<ConnectedDevice> connectedKeyboards() = 0;

protected:
  DeviceEnumerating() = default;
  DeviceEnumerating(const DeviceEnumerating&) = default;
  DeviceEnumerating& operator=(const DeviceEnumerating&) = default;
};

class StubDeviceEnumerator final : public DeviceEnumerating {
public:
  std::vector<ConnectedDevice> connectedKeyboards() override { return devices; }

  std::vector<ConnectedDevice> devices;
};

} // namespace trellivar
