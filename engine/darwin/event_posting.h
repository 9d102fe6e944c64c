#pragma once

#include "core/inline_vector.h"
#include "core/tap_event.h"
#include "engine/darwin/cf_ref.h"

#include <ApplicationServices/ApplicationServices.h>

#include <cstdint>
#include <span>

/// Making events and handing them to the system. Main thread.
namespace trellivar::darwin {

/// Every event that the engine posts carries this in its source user data ("TRLV" in ASCII), so
/// that it knows its own when they come by.
inline constexpr std::int64_t marker = 0x54524C56;

inline bool isOwn(CGEventRef event) {
  return CGEventGetIntegerValueField(event, kCGEventSourceUserData) == marker;
}

/// Which modifiers posted events say to be down, besides those that the same list presses.
struct ModifierContext {
  /// Those that the session holds down; else none, so that a binding does what it says whatever
  /// else is held.
  bool ofSession = false;
  /// Less these, which people hold down but applications must not know of, ...
  InlineVector<KeyName, 8> hidden = {};
  /// ... and with these, as which applications know some of them.
  InlineVector<KeyName, 8> shown = {};
};

/// Posts presses and releases in order. A name decides what it stands for: a key, a media key or a
/// mouse button at the place of the pointer; other names are left out. Arrow and function keys keep
/// the flags that the system gives them. Returns how many events were posted.
int post(std::span<const TapEvent> events, const ModifierContext& context);

} // namespace trellivar::darwin
