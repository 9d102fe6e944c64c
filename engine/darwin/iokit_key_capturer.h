#pragma once

#include "engine/darwin/hid_listener.h"
#include "engine/key_capturing.h"
#include "engine/main_queue.h"

#include <optional>
#include <vector>

namespace trellivar {

/// Captures the keys of keyboards, mice and consumer controls with an HID manager.
///
/// A capture ends when nothing has been held down for `settleInterval` since the last release, or
/// when its time is up. Opening the devices is tried again for some seconds while it fails and
/// nothing has been heard, because it does for a moment after the user has permitted it.
class IOKitKeyCapturer final : public KeyCapturing {
public:
  static constexpr Seconds settleInterval{0.5};
  static constexpr Seconds reopenInterval{0.15};
  static constexpr Seconds longestReopening{5.0};

  /// `queue` must outlive the capturer.
  explicit IOKitKeyCapturer(MainQueue& queue) : queue_(queue) {}

  void capture(Seconds maxDuration, Completion completion) override;

private:
  void open(int attempt);
  void handle(const darwin::HIDInput& input);
  std::vector<DeviceKeyEvent> stop();
  void finish();

  MainQueue& queue_;
  std::optional<darwin::HIDListener> listener_;
  std::vector<DeviceKeyEvent> events_;
  Instant start_{};       ///< of the first event
  Completion completion_; ///< of the running capture; none while idle
  int held_ = 0;          ///< inputs that are down
  Instant openDeadline_{};
  WorkItem settleWork_;
  WorkItem overallWork_;
  WorkItem reopenWork_;
  std::vector<WorkItem> superseded_; ///< captures that others took the place of, yet to be told
};

} // namespace trellivar
