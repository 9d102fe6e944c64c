#include "engine/darwin/hid_listener.h"

#include "engine/darwin/cf_values.h"
#include "engine/darwin/registry.h"
#include "engine/hid_usages.h"

#include <algorithm>
#include <utility>

namespace trellivar::darwin {

namespace {

CFRef<CFMutableDictionaryRef> devicesWith(std::uint32_t usagePage, std::uint32_t usage) {
  return numbers(
      {{CFSTR(kIOHIDDeviceUsagePageKey), usagePage}, {CFSTR(kIOHIDDeviceUsageKey), usage}});
}

void setMatching(IOHIDManagerRef manager, const Matching& dictionaries) {
  if (dictionaries.size() == 1) {
    IOHIDManagerSetDeviceMatching(manager, dictionaries.front().get());
    return;
  }
  std::vector<const void*> values;
  for (const auto& dictionary : dictionaries)
    values.push_back(dictionary.get());
  const auto array = CFRef<CFArrayRef>::adopt(CFArrayCreate(kCFAllocatorDefault, values.data(),
                                                            static_cast<CFIndex>(values.size()),
                                                            &kCFTypeArrayCallBacks));
  IOHIDManagerSetDeviceMatchingMultiple(manager, array.get());
}

} // namespace

Matching keyboardsMiceAndConsumerControls() {
  Matching result;
  result.push_back(devicesWith(hid::genericDesktopPage, hid::keyboardUsage));
  result.push_back(devicesWith(hid::genericDesktopPage, hid::mouseUsage));
  result.push_back(devicesWith(hid::consumerPage, hid::consumerControlUsage));
  return result;
}

std::optional<std::int64_t> HIDInput::integer(CFStringRef key) const {
  return darwin::integer(IOHIDDeviceGetProperty(device, key));
}

std::optional<std::string> HIDInput::text(CFStringRef key) const {
  return darwin::text(IOHIDDeviceGetProperty(device, key));
}

HIDListener::HIDListener(const Matching& matching, Callback callback)
    : callback_(std::move(callback)),
      manager_(CFRef<IOHIDManagerRef>::adopt(
          IOHIDManagerCreate(kCFAllocatorDefault, kIOHIDOptionsTypeNone))),
      openResult_(open(matching)) {}

IOReturn HIDListener::open(const Matching& matching) {
  setMatching(manager_.get(), matching);
  IOHIDManagerRegisterInputValueCallback(manager_.get(), received, this);
  IOHIDManagerScheduleWithRunLoop(manager_.get(), CFRunLoopGetMain(), kCFRunLoopDefaultMode);
  return IOHIDManagerOpen(manager_.get(), kIOHIDOptionsTypeNone);
}

HIDListener::~HIDListener() {
  IOHIDManagerClose(manager_.get(), kIOHIDOptionsTypeNone);
  IOHIDManagerUnscheduleFromRunLoop(manager_.get(), CFRunLoopGetMain(), kCFRunLoopDefaultMode);
}

void HIDListener::received(void* context, IOReturn /*result*/, void* /*sender*/,
                           IOHIDValueRef value) noexcept {
  auto& self = *static_cast<HIDListener*>(context);
  IOHIDElementRef element = IOHIDValueGetElement(value);
  IOHIDDeviceRef device = IOHIDElementGetDevice(element);
  if (self.isRepeated(device)) return;
  self.callback_({device, IOHIDElementGetUsagePage(element), IOHIDElementGetUsage(element),
                  IOHIDValueGetIntegerValue(value)});
}

/// A device that matches several dictionaries comes as several objects, each of which delivers
/// every value. The first to deliver is the one that is heard.
bool HIDListener::isRepeated(IOHIDDeviceRef device) {
  const auto id = entryId(IOHIDDeviceGetService(device));
  if (!id) return false;
  const auto known = std::ranges::find(heard_, *id, &Heard::entryId);
  if (known != heard_.end()) return known->device != device;
  heard_.push_back({*id, device});
  return false;
}

} // namespace trellivar::darwin
