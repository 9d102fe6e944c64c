#include "engine/darwin/event_posting.h"

#include "core/cg_keycode_map.h"
#include "engine/darwin/aux_event.h"
#include "engine/modifier_flags.h"

#include <optional>

namespace trellivar::darwin {

namespace {

using Event = CFRef<CGEventRef>;

/// The flags along one list of events.
class Flags {
public:
  explicit Flags(const ModifierContext& context) : context_(context) {}

  /// Of a keyboard event that is yet to get its flags, which the system has given its own.
  CGEventFlags of(CGEventRef event, const TapEvent& described) {
    const CGEventFlags given = CGEventGetFlags(event);
    if (!modifiers_) modifiers_ = context_.ofSession ? ofSession(given) : 0;
    modifiers_ = isDown(described.kind) ? modifier_flags::pressing(*modifiers_, described.name)
                                        : modifier_flags::releasing(*modifiers_, described.name);
    return (given & ~all_) | *modifiers_;
  }

private:
  CGEventFlags ofSession(CGEventFlags given) const {
    CGEventFlags flags = given & all_;
    for (const KeyName name : context_.hidden)
      flags = modifier_flags::releasing(flags, name);
    for (const KeyName name : context_.shown)
      flags = modifier_flags::pressing(flags, name);
    return flags;
  }

  const CGEventFlags all_ = modifier_flags::all();
  const ModifierContext& context_;
  std::optional<CGEventFlags> modifiers_; ///< known from the first keyboard event on
};

Event keyboardEvent(int keyCode, const TapEvent& described, Flags& flags) {
  auto event = Event::adopt(
      CGEventCreateKeyboardEvent(nullptr, static_cast<CGKeyCode>(keyCode), isDown(described.kind)));
  if (!event) return event;
  if (CGKeycodeMap::modifier(described.name.text()))
    CGEventSetType(event.get(), kCGEventFlagsChanged);
  CGEventSetFlags(event.get(), flags.of(event.get(), described));
  return event;
}

Event mouseEvent(int button, bool isDown) {
  const auto pointer = Event::adopt(CGEventCreate(nullptr));
  auto event = Event::adopt(CGEventCreateMouseEvent(
      nullptr, isDown ? kCGEventOtherMouseDown : kCGEventOtherMouseUp,
      CGEventGetLocation(pointer.get()), static_cast<CGMouseButton>(button)));
  if (!event) return event;
  CGEventSetIntegerValueField(event.get(), kCGMouseEventButtonNumber, button);
  CGEventSetIntegerValueField(event.get(), kCGMouseEventClickState, 1);
  return event;
}

Event build(const TapEvent& described, Flags& flags) {
  const std::string& name = described.name.text();
  if (const auto keyCode = CGKeycodeMap::keyCode(name))
    return keyboardEvent(*keyCode, described, flags);
  if (const auto auxKey = CGKeycodeMap::auxKey(name))
    return Event::adopt(createAuxEvent(*auxKey, isDown(described.kind)));
  if (const auto button = CGKeycodeMap::buttonNumber(name))
    return mouseEvent(*button, isDown(described.kind));
  return {};
}

} // namespace

int post(std::span<const TapEvent> events, const ModifierContext& context) {
  int count = 0;
  Flags flags(context);
  for (const TapEvent& described : events) {
    const Event event = build(described, flags);
    if (!event) continue;
    CGEventSetIntegerValueField(event.get(), kCGEventSourceUserData, marker);
    CGEventPost(kCGHIDEventTap, event.get());
    ++count;
  }
  return count;
}

} // namespace trellivar::darwin
