#pragma once

#include "engine/darwin/hid_listener.h"
#include "engine/device_key_event.h"
#include "engine/main_queue.h"

#include <functional>
#include <optional>

namespace trellivar {

/// Tells of every key event of keyboards, mice and consumer controls while it lives. Main thread.
class KeyMonitor {
public:
  using Callback = std::function<void(const DeviceKeyEvent&)>;

  /// Timestamps count from the first event. `queue` must outlive the monitor.
  KeyMonitor(MainQueue& queue, Callback callback);

  /// Whether every device let itself be opened. A refusal most often means that Input Monitoring is
  /// not permitted; without it devices may also open and stay silent.
  bool isOpen() const noexcept { return listener_.openResult() == kIOReturnSuccess; }

private:
  void handle(const darwin::HIDInput& input);

  MainQueue& queue_;
  Callback callback_;
  std::optional<Instant> start_; ///< of the first event
  darwin::HIDListener listener_;
};

} // namespace trellivar
