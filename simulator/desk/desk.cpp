#include "simulator/desk/desk.h"

#include "simulator/desk/key_codes.h"

#include <utility>

namespace trellivar::desk {

namespace {

/// The usage pages on which an interface with this collection reports.
std::vector<int> reportedPages(Usage collection) {
  if (collection == DeviceDescription::keyboard) return {keyboardPage};
  if (collection == DeviceDescription::mouse) return {buttonPage};
  if (collection == DeviceDescription::consumerControl) return {consumerPage};
  return {collection.page};
}

Entry usbDevice(const DeviceDescription& description) {
  Entry entry;
  entry.classes = {description.isUSB ? "IOUSBHostDevice" : "IOBluetoothDevice", "IOService"};
  if (description.isUSB) {
    entry.properties["idVendor"] = std::int64_t{description.identity.vendorId};
    entry.properties["idProduct"] = std::int64_t{description.identity.productId};
  }
  return entry;
}

Entry hidDevice(const DeviceDescription& description, const std::vector<Usage>& usages) {
  Entry entry;
  entry.classes = {description.isUSB ? "AppleUserUSBHostHIDDevice" : "IOBluetoothHIDDriver",
                   "IOHIDDevice", "IOService"};
  entry.usagePairs = usages;
  entry.properties["VendorID"] = std::int64_t{description.identity.vendorId};
  entry.properties["ProductID"] = std::int64_t{description.identity.productId};
  entry.properties["Product"] = description.product;
  entry.properties["Transport"] = std::string(description.isUSB ? "USB" : "Bluetooth");
  if (!usages.empty()) {
    entry.properties["PrimaryUsagePage"] = std::int64_t{usages.front().page};
    entry.properties["PrimaryUsage"] = std::int64_t{usages.front().usage};
  }
  for (const auto& [key, value] : description.properties) {
    if (value)
      entry.properties[key] = *value;
    else
      entry.properties.erase(key);
  }
  return entry;
}

Entry plain(std::vector<std::string> classes) {
  Entry entry;
  entry.classes = std::move(classes);
  return entry;
}

void addSerialInterface(Registry& registry, EntryId device, const std::string& path) {
  EntryId parent = device;
  for (const char* name : {"IOUSBHostInterface", "AppleUSBCDCACMData", "IOModemSerialStreamSync"})
    parent = registry.add(parent, plain({name, "IOService"}));
  Entry client = plain({"IOSerialBSDClient", "IOService"});
  client.properties["IOCalloutDevice"] = path;
  registry.add(parent, std::move(client));
}

} // namespace

void Desk::setTrusted(bool trusted) {
  isTrusted_ = trusted;
  events_.setMayFilter(trusted);
}

void Desk::setTracking(bool tracking) {
  isTracking_ = tracking;
  if (tracking) return;
  for (MainQueue::Block& block : std::exchange(waiting_, {}))
    inDefaultMode(std::move(block));
}

void Desk::inDefaultMode(MainQueue::Block block) {
  queue_.async([this, block = std::move(block)]() mutable {
    if (isTracking_)
      waiting_.push_back(std::move(block));
    else
      block();
  });
}

Desk::DeviceId Desk::attach(const DeviceDescription& description) {
  const DeviceId id = registry_.add(0, usbDevice(description));
  Attached& device = devices_[id];
  for (const auto& usages : description.interfaces) {
    const EntryId interface = registry_.add(id, hidDevice(description, usages));
    const EntryId driver = registry_.add(interface, plain({"IOHIDInterface", "IOService"}));
    const EntryId sender =
        registry_.add(driver, plain({"AppleUserHIDEventDriver", "IOHIDEventService", "IOService"}));
    for (const Usage& usage : usages) {
      for (const int page : reportedPages(usage)) {
        device.reporters.emplace(page, interface);
        device.senders.emplace(page, sender);
      }
    }
  }
  if (!description.calloutPath.empty()) addSerialInterface(registry_, id, description.calloutPath);
  return id;
}

void Desk::detach(DeviceId device) {
  devices_.erase(device);
  registry_.remove(device);
  updateHardwareFlags();
}

std::vector<EntryId> Desk::interfaces(DeviceId device) const {
  std::vector<EntryId> result;
  for (const EntryId id : registry_.descendants(device)) {
    if (registry_.find(id)->isA("IOHIDDevice")) result.push_back(id);
  }
  return result;
}

EntryId Desk::leafSender(DeviceId device, int usagePage) const {
  return devices_.at(device).senders.at(usagePage);
}

void Desk::press(DeviceId device, KeyName key) { change(device, key, true); }
void Desk::release(DeviceId device, KeyName key) { change(device, key, false); }

void Desk::change(DeviceId device, KeyName key, bool down) {
  const auto found = devices_.find(device);
  const auto codes = keyCodes(key);
  if (found == devices_.end() || !codes || !found->second.reporters.contains(codes->usage.page))
    return;
  auto& pressed = found->second.pressed;
  if (down ? !pressed.insert(key).second : pressed.erase(key) == 0) return;
  updateHardwareFlags();
  report(device, codes->usage, down ? 1 : 0);
  send(found->second, key, down, false);
}

void Desk::repeat(DeviceId device, KeyName key) {
  const auto found = devices_.find(device);
  if (found == devices_.end() || !found->second.pressed.contains(key)) return;
  if (keyCodes(key)->family == KeyCodes::Family::key) send(found->second, key, true, true);
}

const std::set<KeyName, KeyName::ByText>& Desk::pressed(DeviceId device) const {
  static const std::set<KeyName, KeyName::ByText> none;
  const auto found = devices_.find(device);
  return found == devices_.end() ? none : found->second.pressed;
}

void Desk::report(DeviceId device, Usage usage, std::int64_t value) {
  const auto found = devices_.find(device);
  if (found == devices_.end()) return;
  const auto reporter = found->second.reporters.find(usage.page);
  if (reporter != found->second.reporters.end()) hid_.report({reporter->second, usage, value});
}

void Desk::updateHardwareFlags() {
  std::uint64_t flags = 0;
  for (const auto& [id, device] : devices_) {
    for (const KeyName key : device.pressed) {
      const auto codes = keyCodes(key);
      if (codes->family == KeyCodes::Family::modifier) flags |= codes->flags;
    }
  }
  events_.setHardwareFlags(flags);
}

void Desk::send(const Attached& device, KeyName key, bool down, bool isRepeat) {
  const KeyCodes codes = *keyCodes(key);
  InputEvent event;
  event.flags = events_.hardwareFlags() | InputEvent::nonCoalesced;
  event.setField(InputEvent::senderId,
                 static_cast<std::int64_t>(device.senders.at(codes.usage.page)));
  switch (codes.family) {
  case KeyCodes::Family::key:
    event.type = down ? InputEvent::keyDown : InputEvent::keyUp;
    event.flags |= codes.flags;
    event.setField(InputEvent::keyCode, codes.number);
    event.setField(InputEvent::autorepeat, isRepeat ? 1 : 0);
    break;
  case KeyCodes::Family::modifier:
    event.type = InputEvent::flagsChanged;
    event.setField(InputEvent::keyCode, codes.number);
    break;
  case KeyCodes::Family::auxiliary: {
    const int state = down ? InputEvent::auxiliaryDown : InputEvent::auxiliaryUp;
    event.type = InputEvent::systemDefined;
    event.subtype = InputEvent::auxiliaryControl;
    event.data1 = (long{codes.number} << 16) | (state << 8);
    break;
  }
  case KeyCodes::Family::button: {
    const std::uint32_t first = codes.number == 0   ? InputEvent::leftMouseDown
                                : codes.number == 1 ? InputEvent::rightMouseDown
                                                    : InputEvent::otherMouseDown;
    event.type = down ? first : first + 1;
    event.setField(InputEvent::buttonNumber, codes.number);
    event.setField(InputEvent::clickState, 1);
    break;
  }
  }
  events_.post(EventStream::Level::hid, event);
}

} // namespace trellivar::desk
