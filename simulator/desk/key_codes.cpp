#include "simulator/desk/key_codes.h"

#include "engine/modifier_flags.h"

#include <array>
#include <string_view>
#include <unordered_map>

namespace trellivar::desk {

namespace {

using Family = KeyCodes::Family;

struct Row {
  std::string_view name;
  KeyCodes codes;
};

constexpr KeyCodes key(int usage, int code, std::uint64_t flags = 0) {
  return {{keyboardPage, usage}, Family::key, code, flags};
}
constexpr KeyCodes modifier(int usage, int code, std::uint64_t flags) {
  return {{keyboardPage, usage}, Family::modifier, code, flags};
}
constexpr KeyCodes auxiliary(int usage, int key) {
  return {{consumerPage, usage}, Family::auxiliary, key, 0};
}
constexpr KeyCodes button(int number) {
  return {{buttonPage, number + 1}, Family::button, number, 0};
}

constexpr std::uint64_t fn = InputEvent::secondaryFn;
constexpr std::uint64_t arrow = InputEvent::secondaryFn | InputEvent::numericPad;

/// Usages of the USB HID usage tables, virtual key codes of the ANSI layout (HIToolbox/Events.h),
/// flags of IOLLEvent.h, auxiliary keys of ev_keymap.h.
constexpr std::array rows{
    Row{"a", key(4, 0)},
    Row{"b", key(5, 11)},
    Row{"c", key(6, 8)},
    Row{"d", key(7, 2)},
    Row{"e", key(8, 14)},
    Row{"f", key(9, 3)},
    Row{"g", key(10, 5)},
    Row{"h", key(11, 4)},
    Row{"i", key(12, 34)},
    Row{"j", key(13, 38)},
    Row{"k", key(14, 40)},
    Row{"l", key(15, 37)},
    Row{"m", key(16, 46)},
    Row{"n", key(17, 45)},
    Row{"o", key(18, 31)},
    Row{"p", key(19, 35)},
    Row{"q", key(20, 12)},
    Row{"r", key(21, 15)},
    Row{"s", key(22, 1)},
    Row{"t", key(23, 17)},
    Row{"u", key(24, 32)},
    Row{"v", key(25, 9)},
    Row{"w", key(26, 13)},
    Row{"x", key(27, 7)},
    Row{"y", key(28, 16)},
    Row{"z", key(29, 6)},
    Row{"1", key(30, 18)},
    Row{"2", key(31, 19)},
    Row{"3", key(32, 20)},
    Row{"4", key(33, 21)},
    Row{"5", key(34, 23)},
    Row{"6", key(35, 22)},
    Row{"7", key(36, 26)},
    Row{"8", key(37, 28)},
    Row{"9", key(38, 25)},
    Row{"0", key(39, 29)},
    Row{"return_or_enter", key(40, 36)},
    Row{"escape", key(41, 53)},
    Row{"delete_or_backspace", key(42, 51)},
    Row{"tab", key(43, 48)},
    Row{"spacebar", key(44, 49)},
    Row{"hyphen", key(45, 27)},
    Row{"equal_sign", key(46, 24)},
    Row{"open_bracket", key(47, 33)},
    Row{"close_bracket", key(48, 30)},
    Row{"backslash", key(49, 42)},
    Row{"semicolon", key(51, 41)},
    Row{"quote", key(52, 39)},
    Row{"grave_accent_and_tilde", key(53, 50)},
    Row{"comma", key(54, 43)},
    Row{"period", key(55, 47)},
    Row{"slash", key(56, 44)},
    Row{"f1", key(58, 122, fn)},
    Row{"f2", key(59, 120, fn)},
    Row{"f3", key(60, 99, fn)},
    Row{"f4", key(61, 118, fn)},
    Row{"f5", key(62, 96, fn)},
    Row{"f6", key(63, 97, fn)},
    Row{"f7", key(64, 98, fn)},
    Row{"f8", key(65, 100, fn)},
    Row{"f9", key(66, 101, fn)},
    Row{"f10", key(67, 109, fn)},
    Row{"f11", key(68, 103, fn)},
    Row{"f12", key(69, 111, fn)},
    Row{"right_arrow", key(79, 124, arrow)},
    Row{"left_arrow", key(80, 123, arrow)},
    Row{"down_arrow", key(81, 125, arrow)},
    Row{"up_arrow", key(82, 126, arrow)},
    Row{"left_control", modifier(224, 59, 0x40001)},
    Row{"left_shift", modifier(225, 56, 0x20002)},
    Row{"left_option", modifier(226, 58, 0x80020)},
    Row{"left_command", modifier(227, 55, 0x100008)},
    Row{"right_control", modifier(228, 62, 0x42000)},
    Row{"right_shift", modifier(229, 60, 0x20004)},
    Row{"right_option", modifier(230, 61, 0x80040)},
    Row{"right_command", modifier(231, 54, 0x100010)},
    Row{"fastforward", auxiliary(0xB3, 19)},
    Row{"rewind", auxiliary(0xB4, 20)},
    Row{"next_track", auxiliary(0xB5, 17)},
    Row{"previous_track", auxiliary(0xB6, 18)},
    Row{"play_or_pause", auxiliary(0xCD, 16)},
    Row{"mute", auxiliary(0xE2, 7)},
    Row{"volume_increment", auxiliary(0xE9, 0)},
    Row{"volume_decrement", auxiliary(0xEA, 1)},
    Row{"button1", button(0)},
    Row{"button2", button(1)},
    Row{"button3", button(2)},
    Row{"button4", button(3)},
    Row{"button5", button(4)},
};

KeyName nameOf(Family family, int number) {
  for (const Row& row : rows) {
    const bool isKey = family == Family::key && row.codes.family == Family::modifier;
    if ((row.codes.family == family || isKey) && row.codes.number == number)
      return KeyName{row.name};
  }
  return {};
}

std::optional<NamedEvent> namedAs(Family family, std::int64_t number, TapEvent::Kind kind) {
  const KeyName name = nameOf(family, static_cast<int>(number));
  if (name == KeyName()) return std::nullopt;
  return NamedEvent{kind, name};
}

} // namespace

std::optional<KeyCodes> keyCodes(KeyName name) {
  static const auto& table = *new auto([] {
    std::unordered_map<KeyName, KeyCodes> result;
    for (const Row& row : rows)
      result.emplace(KeyName(row.name), row.codes);
    return result;
  }());
  const auto found = table.find(name);
  if (found == table.end()) return std::nullopt;
  return found->second;
}

std::optional<NamedEvent> named(const InputEvent& event) {
  using Kind = TapEvent::Kind;
  switch (event.type) {
  case InputEvent::keyDown:
    return namedAs(Family::key, event.field(InputEvent::keyCode), Kind::keyDown);
  case InputEvent::keyUp:
    return namedAs(Family::key, event.field(InputEvent::keyCode), Kind::keyUp);
  case InputEvent::flagsChanged: {
    auto result = namedAs(Family::modifier, event.field(InputEvent::keyCode), Kind::keyUp);
    if (result && modifier_flags::isDown(event.flags, result->name)) result->kind = Kind::keyDown;
    return result;
  }
  case InputEvent::systemDefined:
    if (event.subtype != InputEvent::auxiliaryControl) return std::nullopt;
    return namedAs(Family::auxiliary, event.data1 >> 16 & 0xFFFF,
                   (event.data1 >> 8 & 0xFF) == InputEvent::auxiliaryDown ? Kind::consumerDown
                                                                          : Kind::consumerUp);
  case InputEvent::leftMouseDown:
  case InputEvent::rightMouseDown:
  case InputEvent::otherMouseDown:
    return namedAs(Family::button, event.field(InputEvent::buttonNumber), Kind::pointingDown);
  case InputEvent::leftMouseUp:
  case InputEvent::rightMouseUp:
  case InputEvent::otherMouseUp:
    return namedAs(Family::button, event.field(InputEvent::buttonNumber), Kind::pointingUp);
  default:
    return std::nullopt;
  }
}

} // namespace trellivar::desk
