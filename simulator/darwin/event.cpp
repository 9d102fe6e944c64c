#include "simulator/darwin/event.h"

#include "core/cg_keycode_map.h"
#include "simulator/darwin/machine.h"
#include "simulator/desk/key_codes.h"

#include <ApplicationServices/ApplicationServices.h>

#include <array>

namespace trellivar::darwin_double {

std::string Event::description() const { return "type " + std::to_string(input.type); }

namespace {

using desk::InputEvent;

/// What the system makes of a key code by itself.
struct KeyTraits {
  bool isModifier = false;
  std::uint64_t flags = 0; ///< of keys that count as function or numeric-pad keys
};

KeyTraits traitsOf(CGKeyCode keyCode) {
  static const auto table = [] {
    std::array<KeyTraits, 128> result{};
    for (std::size_t code = 0; code < result.size(); ++code) {
      const auto name = CGKeycodeMap::name(static_cast<int>(code));
      const auto codes = name ? desk::keyCodes(*name) : std::nullopt;
      if (!codes) continue;
      result[code].isModifier = codes->family == desk::KeyCodes::Family::modifier;
      if (!result[code].isModifier) result[code].flags = codes->flags;
    }
    return result;
  }();
  return keyCode < table.size() ? table[keyCode] : KeyTraits{};
}

/// No program that is tested here has a source of its own.
void requireNoSource(CGEventSourceRef source, const char* call) {
  if (source != nullptr) fail(call, "event sources are not known here");
}

/// With the flags and the pointer of this moment.
Event& makeEvent(const char* call) {
  const Machine& here = machine(call);
  auto& event = *new Event;
  event.input.flags = here.desk.events().sessionFlags();
  event.input.x = here.pointerX;
  event.input.y = here.pointerY;
  return event;
}

CGEventRef createKeyboardEvent(CGKeyCode keyCode, bool keyDown) {
  Event& event = makeEvent("CGEventCreateKeyboardEvent");
  const KeyTraits traits = traitsOf(keyCode);
  event.input.type = keyDown ? InputEvent::keyDown : InputEvent::keyUp;
  if (traits.isModifier) event.input.type = InputEvent::flagsChanged;
  event.input.flags |= traits.flags;
  event.input.setField(InputEvent::keyCode, keyCode);
  return handedOut<CGEventRef>(&event);
}

/// The type decides which button it is; none: the type is not that of a button.
std::optional<std::uint32_t> buttonOf(CGEventType type, CGMouseButton given) {
  switch (type) {
  case kCGEventLeftMouseDown:
  case kCGEventLeftMouseUp:
    return kCGMouseButtonLeft;
  case kCGEventRightMouseDown:
  case kCGEventRightMouseUp:
    return kCGMouseButtonRight;
  case kCGEventOtherMouseDown:
  case kCGEventOtherMouseUp:
  case kCGEventOtherMouseDragged:
    return given;
  default:
    return std::nullopt;
  }
}

CGEventRef createMouseEvent(CGEventType type, CGPoint location, CGMouseButton given) {
  const auto button = buttonOf(type, given);
  if (!button) return nullptr;
  Event& event = makeEvent("CGEventCreateMouseEvent");
  event.input.type = type;
  event.input.x = location.x;
  event.input.y = location.y;
  event.input.setField(InputEvent::buttonNumber, *button);
  return handedOut<CGEventRef>(&event);
}

void post(CGEventTapLocation location, const Event& event) {
  const Machine& here = machine("CGEventPost");
  if (!here.desk.isTrusted()) return;
  InputEvent posted = event.input;
  posted.setField(InputEvent::sourceProcessId, here.processId);
  if (here.postedSender != 0 && posted.field(InputEvent::senderId) == 0)
    posted.setField(InputEvent::senderId, here.postedSender);
  here.desk.events().post(static_cast<desk::EventStream::Level>(location), posted);
}

/// Getters take NULL for an event of which everything is 0.
const InputEvent& read(CGEventRef event, const char* call) {
  static const InputEvent nothing;
  return event ? as<Event>(event, call).input : nothing;
}

} // namespace

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

extern "C" {

CFTypeID CGEventGetTypeID() { return static_cast<CFTypeID>(Kind::event); }

CGEventRef CGEventCreate(CGEventSourceRef source) {
  requireNoSource(source, "CGEventCreate");
  return handedOut<CGEventRef>(&makeEvent("CGEventCreate"));
}

CGEventRef CGEventCreateCopy(CGEventRef event) {
  return event ? handedOut<CGEventRef>(new Event(as<Event>(event, "CGEventCreateCopy").input))
               : nullptr;
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode keyCode, bool keyDown) {
  requireNoSource(source, "CGEventCreateKeyboardEvent");
  return createKeyboardEvent(keyCode, keyDown);
}

CGEventRef CGEventCreateMouseEvent(CGEventSourceRef source, CGEventType type, CGPoint location,
                                   CGMouseButton button) {
  requireNoSource(source, "CGEventCreateMouseEvent");
  return createMouseEvent(type, location, button);
}

CGEventType CGEventGetType(CGEventRef event) {
  return static_cast<CGEventType>(read(event, "CGEventGetType").type);
}

void CGEventSetType(CGEventRef event, CGEventType type) {
  as<Event>(event, "CGEventSetType").input.type = type;
}

CGEventFlags CGEventGetFlags(CGEventRef event) { return read(event, "CGEventGetFlags").flags; }

void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
  as<Event>(event, "CGEventSetFlags").input.flags = flags;
}

CGPoint CGEventGetLocation(CGEventRef event) {
  const auto& input = read(event, "CGEventGetLocation");
  return {input.x, input.y};
}

void CGEventSetLocation(CGEventRef event, CGPoint location) {
  auto& input = as<Event>(event, "CGEventSetLocation").input;
  input.x = location.x;
  input.y = location.y;
}

std::int64_t CGEventGetIntegerValueField(CGEventRef event, CGEventField field) {
  return read(event, "CGEventGetIntegerValueField").field(field);
}

void CGEventSetIntegerValueField(CGEventRef event, CGEventField field, std::int64_t value) {
  as<Event>(event, "CGEventSetIntegerValueField").input.setField(field, value);
}

void CGEventPost(CGEventTapLocation location, CGEventRef event) {
  post(location, as<Event>(event, "CGEventPost"));
}

} // extern "C"
