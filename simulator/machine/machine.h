#pragma once

#include "engine/darwin/iokit_device_enumerator.h"
#include "engine/darwin/iokit_device_identifier.h"
#include "engine/darwin/iokit_hotplug_watcher.h"
#include "engine/darwin/iokit_key_capturer.h"
#include "engine/darwin/iokit_sender_resolver.h"
#include "engine/darwin/tap_engine.h"
#include "engine/orlo3_serial_link.h"
#include "simulator/darwin/platform.h"
#include "simulator/desk/desk.h"
#include "simulator/desk/pad.h"
#include "simulator/firmware/firmware_port.h"
#include "simulator/firmware/pad_firmware.h"

#include <memory>
#include <optional>
#include <string>

namespace trellivar::desk {

/// A whole computer on the desk: an ordinary keyboard, the pad with its firmware, and the services
/// of the product as a Mac has them, running on the desk's queue. Both permissions are granted, the
/// pad is away. One at a time; one thread, but for a link, which may be used on another while the
/// desk rests.
class Machine {
public:
  /// How long the watcher waits for the end of a burst of changes.
  static constexpr Seconds hotplugDebounce{0.3};
  static constexpr DeviceIdentity keyboardIdentity{0x1234, 0x0001};

  Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  desk::Desk desk;
  darwin_double::Platform platform{desk};
  Pad pad{desk};
  firmware::PadFirmware firmware;
  Desk::DeviceId keyboard = 0;

  std::shared_ptr<IOKitHotplugWatcher> hotplug;
  TapEngine engine;
  IOKitKeyCapturer capturer{desk.queue()};
  IOKitDeviceIdentifier identifier{desk.queue()};
  IOKitDeviceEnumerator enumerator;

  /// The serial link to the pad, in real time on `clock`, which must outlive it.
  Orlo3SerialLink link(LinkClock& clock);

  /// A pseudo-terminal from the first connection by cable on.
  std::optional<firmware::FirmwarePort> port;

private:
  std::string calloutPath();
  std::optional<std::vector<MacroEvent>> macro(std::string_view mode, int key) const;
  std::unique_ptr<SerialPort> open(const std::string& path, LinkClock& clock) const;
};

} // namespace trellivar::desk
