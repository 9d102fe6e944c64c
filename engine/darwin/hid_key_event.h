#pragma once

#include "engine/darwin/hid_listener.h"
#include "engine/device_key_event.h"

#include <optional>

namespace trellivar::darwin {

/// What captures make of an element that has changed: a press when its value is 1, else a release.
/// None for an element that is no key that they know. The timestamp is left at 0.
std::optional<DeviceKeyEvent> keyEvent(const HIDInput& input);

} // namespace trellivar::darwin
