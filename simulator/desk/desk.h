#pragma once

#include "core/device_identity.h"
#include "core/key_name.h"
#include "simulator/desk/event_stream.h"
#include "simulator/desk/hid_bus.h"
#include "simulator/desk/manual_queue.h"
#include "simulator/desk/permissions.h"
#include "simulator/desk/registry.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace trellivar::desk {

/// A device as it is plugged in.
struct DeviceDescription {
  std::string product;
  DeviceIdentity identity;
  bool isUSB = true; ///< else Bluetooth
  /// The HID interfaces, one list of usages each, the primary one first. All interfaces carry the
  /// identity of the device.
  std::vector<std::vector<Usage>> interfaces;
  /// The device file of a serial interface, such as "/dev/cu.usbmodem1101"; empty: it has none.
  std::string calloutPath = {};
  /// Properties of every HID interface that are other than usual; none: missing.
  std::map<std::string, std::optional<Property>> properties = {};

  static constexpr Usage keyboard{0x01, 0x06};
  static constexpr Usage mouse{0x01, 0x02};
  static constexpr Usage consumerControl{0x0C, 0x01};
};

/// A desk with a computer on it: its devices, the input that they send and who receives it, what
/// the user has permitted, and time. One thread.
///
/// A press goes two ways, as on a real machine: its value is reported to whoever has opened the
/// device, and its event travels through the taps to the applications.
class Desk {
public:
  using DeviceId = EntryId; ///< the entry of the device in the registry

  Desk() = default;
  Desk(const Desk&) = delete;
  Desk& operator=(const Desk&) = delete;

  ManualQueue& queue() noexcept { return queue_; }
  Registry& registry() noexcept { return registry_; }
  const Registry& registry() const noexcept { return registry_; }
  EventStream& events() noexcept { return events_; }
  const EventStream& events() const noexcept { return events_; }
  HIDBus& hid() noexcept { return hid_; }
  Faults& faults() noexcept { return faults_; }

  bool isTrusted() const noexcept { return isTrusted_; }
  void setTrusted(bool trusted); ///< Accessibility
  Access inputMonitoring() const noexcept { return inputMonitoring_; }
  void setInputMonitoring(Access access) noexcept { inputMonitoring_ = access; }

  /// A menu is open or a window is dragged: only what runs in the common modes runs.
  bool isTracking() const noexcept { return isTracking_; }
  /// Afterwards what had to wait is done, on the main queue.
  void setTracking(bool tracking);
  /// Runs `block` from the main queue as soon as it runs in the default mode.
  void inDefaultMode(MainQueue::Block block);

  DeviceId attach(const DeviceDescription& description);
  /// The device is gone, keys that are down included; nothing says that they came up.
  void detach(DeviceId device);
  /// The HID interfaces of the device, entries of class "IOHIDDevice".
  std::vector<EntryId> interfaces(DeviceId device) const;
  /// The service that stamps its events; that of the interface with this usage page.
  EntryId leafSender(DeviceId device, int usagePage) const;

  /// Nothing happens if the device is gone, the desk does not know the key or the device has no
  /// interface for it, or if the key is down (up) already.
  void press(DeviceId device, KeyName key);
  void release(DeviceId device, KeyName key);
  /// The key is held: the system repeats its event. Only for ordinary keys that are down.
  void repeat(DeviceId device, KeyName key);
  /// What people hold down on the device.
  const std::set<KeyName, KeyName::ByText>& pressed(DeviceId device) const;

  /// What entered through the device: a value on any usage, without an event.
  void report(DeviceId device, Usage usage, std::int64_t value);

private:
  struct Attached {
    std::map<int, EntryId> reporters; ///< by usage page
    std::map<int, EntryId> senders;   ///< by usage page
    std::set<KeyName, KeyName::ByText> pressed;
  };

  void change(DeviceId device, KeyName key, bool down);
  void send(const Attached& device, KeyName key, bool down, bool isRepeat);
  void updateHardwareFlags();

  ManualQueue queue_;
  Registry registry_;
  EventStream events_{queue_};
  HIDBus hid_;
  Faults faults_;
  bool isTrusted_ = true;
  Access inputMonitoring_ = Access::granted;
  bool isTracking_ = false;
  std::vector<MainQueue::Block> waiting_; ///< for the default mode
  std::map<DeviceId, Attached> devices_;
};

} // namespace trellivar::desk
