#pragma once

#include "engine/darwin/hid_listener.h"
#include "engine/device_identifying.h"
#include "engine/main_queue.h"

#include <optional>
#include <vector>

namespace trellivar {

/// Waits for a key press with an HID manager.
class IOKitDeviceIdentifier final : public DeviceIdentifying {
public:
  /// `queue` must outlive the identifier.
  explicit IOKitDeviceIdentifier(MainQueue& queue) : queue_(queue) {}

  void identifyNextKeyDevice(Seconds timeout, Completion completion) override;

private:
  void handle(const darwin::HIDInput& input);
  void finish();

  MainQueue& queue_;
  std::optional<darwin::HIDListener> listener_;
  Completion completion_;                 ///< none while nothing is waited for
  std::optional<IdentifiedDevice> found_; ///< the wait is over, but for telling
  WorkItem finishWork_;
  std::vector<WorkItem> superseded_; ///< waits that others took the place of, yet to be told
};

} // namespace trellivar
