#pragma once

#include "core/tap_event.h"
#include "simulator/desk/input_event.h"
#include "simulator/desk/registry.h"

#include <optional>

namespace trellivar::desk {

// Pages of the USB HID usage tables.
inline constexpr int keyboardPage = 0x07;
inline constexpr int buttonPage = 0x09;
inline constexpr int consumerPage = 0x0C;

/// What a device reports for a key, and what the system makes of it.
struct KeyCodes {
  enum class Family : std::uint8_t { key, modifier, auxiliary, button };

  Usage usage; ///< USB HID usage tables
  Family family = Family::key;
  int number = 0;          ///< virtual key code, auxiliary key or zero-based button
  std::uint64_t flags = 0; ///< of a modifier: both its bits; of a key: what the system adds
};

/// None for a name that no keyboard of the desk has a key for.
std::optional<KeyCodes> keyCodes(KeyName name);

/// The event as the engine would name it; none for what has no name.
struct NamedEvent {
  TapEvent::Kind kind = TapEvent::Kind::keyDown;
  KeyName name;
  friend bool operator==(const NamedEvent&, const NamedEvent&) = default;
};
std::optional<NamedEvent> named(const InputEvent& event);

} // namespace trellivar::desk
