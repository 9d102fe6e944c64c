#include "engine/darwin/hid_key_event.h"

#include "engine/hid_usages.h"

namespace trellivar::darwin {

std::optional<DeviceKeyEvent> keyEvent(const HIDInput& input) {
  const auto key = hid::key(input.usagePage, input.usage);
  if (!key) return std::nullopt;
  const auto phase = input.value == 1 ? KeyEvent::Phase::down : KeyEvent::Phase::up;
  return DeviceKeyEvent{{*key, phase, 0, hid::isModifier(input.usagePage, input.usage)},
                        static_cast<int>(input.integer(CFSTR(kIOHIDVendorIDKey)).value_or(0)),
                        static_cast<int>(input.integer(CFSTR(kIOHIDProductIDKey)).value_or(0))};
}

} // namespace trellivar::darwin
