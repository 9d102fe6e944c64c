#pragma once

#include "core/tap_event.h"

#include <ApplicationServices/ApplicationServices.h>

#include <cstdint>
#include <optional>

/// The events of the system as the tap processor sees them. Main thread.
namespace trellivar::darwin {

/// System-defined events; the system has no public name for their type (NX_SYSDEFINED).
inline constexpr auto systemDefinedType = static_cast<CGEventType>(14);

/// The registry id of the HID service that sent an event; 0 when it has none. The field has no
/// public name.
inline std::int64_t senderOf(CGEventRef event) {
  return CGEventGetIntegerValueField(event, static_cast<CGEventField>(87));
}

/// None for an event that is not the press or release of a key, media key or further mouse button
/// with a name.
std::optional<TapEvent> translate(CGEventType type, CGEventRef event, std::int64_t sender);

/// The press comes from holding the key, not from pressing it.
bool isRepeat(CGEventType type, CGEventRef event);

/// Makes the press or release of one modifier that of another. False, with the event unchanged, if
/// either is not a modifier. The flags of a release stay as they are: what they tell is down then
/// is down on another keyboard.
bool rewriteModifier(CGEventRef event, KeyName newName, bool isPress);

} // namespace trellivar::darwin
