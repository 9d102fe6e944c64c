#pragma once

#include "core/instant.h"
#include "engine/device_key_event.h"

#include <functional>
#include <vector>

namespace trellivar {

/// Listens to the keys of all devices for a while. Main thread.
class KeyCapturing {
public:
  /// Receives the events in the order of their arrival, possibly none.
  using Completion = std::function<void(std::vector<DeviceKeyEvent>)>;

  virtual ~KeyCapturing() = default;

  /// Starts a capture; one that is running is finished with what it has. `completion` is called
  /// exactly once, on the main thread, unless the capturer is destroyed before.
  virtual void capture(Seconds maxDuration, Completion completion) = 0;

protected:
  KeyCapturing() = default;
  KeyCapturing(const KeyCapturing&) = default;
  KeyCapturing& operator=(const KeyCapturing&) = default;
};

/// Captures a fixed list, within the call.
class StubKeyCapturer final : public KeyCapturing {
public:
  void capture(Seconds /*maxDuration*/, Completion completion) override { completion(events); }

  std::vector<DeviceKeyEvent> events;
};

} // namespace trellivar
