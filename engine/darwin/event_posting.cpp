#include "engine/darwin/event_posting.h"

#include "core/cg_keycode_map.h"
#include "engine/darwin/aux_event.h"
#include "engine/modifier_flags.h"

#include <optional>
#include <string>
#include <string_view>

namespace trellivar::darwin {

namespace {

using Event = CFRef<CGEventRef>;

/// Flags that belong to a key rather than to a modifier: fn, numeric pad, help.
constexpr CGEventFlags flagsOfKeys =
    kCGEventFlagMaskSecondaryFn | kCGEventFlagMaskNumericPad | kCGEventFlagMaskHelp;

/// Arrow and function keys; for them the system sets such flags itself, elsewhere they tell what is
/// held on some keyboard.
bool hasFlagsOfItsOwn(std::string_view name) {
  const bool isFunctionKey = name.size() > 1 && name[0] == 'f' && name[1] >= '0' && name[1] <= '9';
  return isFunctionKey || name.ends_with("_arrow");
}

/// The flags along one list of events.
class Flags {
public:
  explicit Flags(const ModifierContext& context) : context_(context) {}

  /// Of an event that is yet to get its flags, which the system has given its own.
  CGEventFlags of(CGEventRef event, const TapEvent& described) {
    CGEventFlags given = CGEventGetFlags(event);
    if (!modifiers_) modifiers_ = context_.ofSession ? ofSession(given) : 0;
    modifiers_ = isDown(described.kind) ? modifier_flags::pressing(*modifiers_, described.name)
                                        : modifier_flags::releasing(*modifiers_, described.name);
    given &= ~all_;
    if (!hasFlagsOfItsOwn(described.name.text())) given &= ~flagsOfKeys;
    return given | *modifiers_;
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
  std::optional<CGEventFlags> modifiers_; ///< known from the first event on
};

Event keyboardEvent(int keyCode, const TapEvent& described) {
  auto event = Event::adopt(
      CGEventCreateKeyboardEvent(nullptr, static_cast<CGKeyCode>(keyCode), isDown(described.kind)));
  if (event && CGKeycodeMap::modifier(described.name.text()))
    CGEventSetType(event.get(), kCGEventFlagsChanged);
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

Event build(const TapEvent& described) {
  const std::string& name = described.name.text();
  if (const auto keyCode = CGKeycodeMap::keyCode(name)) return keyboardEvent(*keyCode, described);
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
    const Event event = build(described);
    if (!event) continue;
    CGEventSetFlags(event.get(), flags.of(event.get(), described));
    CGEventSetIntegerValueField(event.get(), kCGEventSourceUserData, marker);
    CGEventPost(kCGHIDEventTap, event.get());
    ++count;
  }
  return count;
}

} // namespace trellivar::darwin
