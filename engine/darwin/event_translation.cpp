#include "engine/darwin/event_translation.h"

#include "core/cg_keycode_map.h"
#include "engine/darwin/aux_event.h"
#include "engine/modifier_flags.h"

namespace trellivar::darwin {

namespace {

using Kind = TapEvent::Kind;

std::optional<KeyName> keyName(CGEventRef event) {
  return CGKeycodeMap::name(
      static_cast<int>(CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode)));
}

bool isModifier(KeyName name) { return CGKeycodeMap::modifier(name.text()).has_value(); }

std::optional<TapEvent> named(std::int64_t sender, Kind kind, std::optional<KeyName> name) {
  if (!name) return std::nullopt;
  return TapEvent{sender, kind, *name};
}

std::optional<TapEvent> modifierEvent(CGEventRef event, std::int64_t sender) {
  const auto name = keyName(event);
  if (!name || !isModifier(*name)) return std::nullopt;
  const bool isDown = modifier_flags::isDown(CGEventGetFlags(event), *name);
  return TapEvent{sender, isDown ? Kind::keyDown : Kind::keyUp, *name};
}

/// The layout of an auxiliary control's data.
constexpr int auxKeyOf(long data1) { return static_cast<int>(data1 >> 16 & 0xFFFF); }
constexpr int auxStateOf(long data1) { return static_cast<int>(data1 >> 8 & 0xFF); }
constexpr bool isAuxRepeat(long data1) { return (data1 & 1) != 0; }

std::optional<TapEvent> auxEvent(CGEventRef event, std::int64_t sender) {
  const auto data = systemDefinedData(event);
  if (!data || data->subtype != auxControlSubtype) return std::nullopt;
  const bool isDown = auxStateOf(data->data1) == auxKeyDownState;
  return named(sender, isDown ? Kind::consumerDown : Kind::consumerUp,
               CGKeycodeMap::consumerName(auxKeyOf(data->data1)));
}

std::optional<KeyName> buttonName(CGEventRef event) {
  return CGKeycodeMap::pointingName(
      static_cast<int>(CGEventGetIntegerValueField(event, kCGMouseEventButtonNumber)));
}

} // namespace

std::optional<TapEvent> translate(CGEventType type, CGEventRef event, std::int64_t sender) {
  if (type == systemDefinedType) return auxEvent(event, sender); // no enumerator has its number
  switch (type) {
  case kCGEventKeyDown:
    return named(sender, Kind::keyDown, keyName(event));
  case kCGEventKeyUp:
    return named(sender, Kind::keyUp, keyName(event));
  case kCGEventFlagsChanged:
    return modifierEvent(event, sender);
  case kCGEventOtherMouseDown:
    return named(sender, Kind::pointingDown, buttonName(event));
  case kCGEventOtherMouseUp:
    return named(sender, Kind::pointingUp, buttonName(event));
  default:
    return std::nullopt;
  }
}

bool isRepeat(CGEventType type, CGEventRef event) {
  if (type == kCGEventKeyDown)
    return CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0;
  if (type != systemDefinedType) return false;
  const auto data = systemDefinedData(event);
  return data && isAuxRepeat(data->data1);
}

bool rewriteModifier(CGEventRef event, KeyName newName, bool isPress) {
  const auto oldName = keyName(event);
  if (!oldName || !isModifier(*oldName) || !isModifier(newName)) return false;
  CGEventSetIntegerValueField(event, kCGKeyboardEventKeycode,
                              *CGKeycodeMap::keyCode(newName.text()));
  const CGEventFlags flags = CGEventGetFlags(event);
  if (isPress && modifier_flags::isDown(flags, *oldName)) {
    CGEventSetFlags(event,
                    modifier_flags::pressing(modifier_flags::releasing(flags, *oldName), newName));
  }
  return true;
}

} // namespace trellivar::darwin
