#pragma once

#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_device_identifier.h"
#include "engine/darwin/iokit_hotplug_watcher.h"
#include "engine/darwin/iokit_key_capturer.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/tap_engine.h"
#include "simulator/darwin/platform.h"
#include "simulator/desk/desk.h"
#include "simulator/desk/pad.h"

#include <memory>

namespace trellivar::desk {

/// A whole computer on the desk: an ordinary keyboard, the pad, and the services of the product as
/// a Mac has them, running on the desk's queue. Both permissions are granted, the pad is away. One
/// at a time; one thread.
class Machine {
public:
  /// How long the watcher waits for the end of a burst of changes.
  static constexpr Seconds hotplugDebounce{0.3};
  static constexpr DeviceIdentity keyboardIdentity{0x1D6B, 0x0104};

  Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  desk::Desk desk;
  darwin_double::Platform platform{desk};
  Pad pad{desk};
  Desk::DeviceId keyboard = 0;

  std::shared_ptr<IOKitHotplugWatcher> hotplug;
  TapEngine engine;
  IOKitKeyCapturer capturer{desk.queue()};
  IOKitDeviceIdentifier identifier{desk.queue()};
  IOKitDeviceEnumerator enumerator;
};

} // namespace trellivar::desk
