#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The rows behind every translation of key names: each fact about a key stands here once, and
/// every look-up, in either direction, is built from these rows.
namespace trellivar::keytable {

/// A key as the pad's firmware knows it: a name in the style of the web's keyboard event codes and
/// a number in the Windows virtual-key numbering. An empty name means that the firmware lacks the
/// key.
struct Firmware {
  std::string_view name;
  int code = 0;
};

struct KeyRow {
  std::string_view name;
  int keyCode; ///< macOS virtual key code of the ANSI layout (kVK_* in HIToolbox/Events.h)
  Firmware firmware = {};
};

/// Keypad keys, F13 and above, Home/End/Page keys and forward delete are deliberately absent.
inline constexpr std::array<KeyRow, 68> keys{{
    {"a", 0, {"A", 65}},
    {"s", 1, {"S", 83}},
    {"d", 2, {"D", 68}},
    {"f", 3, {"F", 70}},
    {"h", 4, {"H", 72}},
    {"g", 5, {"G", 71}},
    {"z", 6, {"Z", 90}},
    {"x", 7, {"X", 88}},
    {"c", 8, {"C", 67}},
    {"v", 9, {"V", 86}},
    {"b", 11, {"B", 66}},
    {"q", 12, {"Q", 81}},
    {"w", 13, {"W", 87}},
    {"e", 14, {"E", 69}},
    {"r", 15, {"R", 82}},
    {"y", 16, {"Y", 89}},
    {"t", 17, {"T", 84}},
    {"1", 18, {"1", 49}},
    {"2", 19, {"2", 50}},
    {"3", 20, {"3", 51}},
    {"4", 21, {"4", 52}},
    {"6", 22, {"6", 54}},
    {"5", 23, {"5", 53}},
    {"9", 25, {"9", 57}},
    {"7", 26, {"7", 55}},
    {"8", 28, {"8", 56}},
    {"0", 29, {"0", 48}},
    {"equal_sign", 24},
    {"hyphen", 27},
    {"close_bracket", 30},
    {"open_bracket", 33},
    {"o", 31, {"O", 79}},
    {"u", 32, {"U", 85}},
    {"i", 34, {"I", 73}},
    {"p", 35, {"P", 80}},
    {"l", 37, {"L", 76}},
    {"j", 38, {"J", 74}},
    {"k", 40, {"K", 75}},
    {"n", 45, {"N", 78}},
    {"m", 46, {"M", 77}},
    {"return_or_enter", 36, {"Enter", 13}},
    {"quote", 39},
    {"semicolon", 41},
    {"backslash", 42},
    {"comma", 43},
    {"slash", 44},
    {"period", 47},
    {"tab", 48, {"Tab", 9}},
    {"spacebar", 49, {"Space", 32}},
    {"grave_accent_and_tilde", 50},
    {"delete_or_backspace", 51, {"Backspace", 8}},
    {"escape", 53, {"Escape", 27}},
    {"f1", 122},
    {"f2", 120},
    {"f3", 99},
    {"f4", 118},
    {"f5", 96},
    {"f6", 97},
    {"f7", 98},
    {"f8", 100},
    {"f9", 101},
    {"f10", 109},
    {"f11", 103},
    {"f12", 111},
    {"left_arrow", 123, {"ArrowLeft", 37}},
    {"right_arrow", 124, {"ArrowRight", 39}},
    {"down_arrow", 125, {"ArrowDown", 40}},
    {"up_arrow", 126, {"ArrowUp", 38}},
}};

struct ModifierRow {
  std::string_view name; ///< also the persisted value: never change
  std::string_view symbol;
  std::size_t opposite;  ///< row of the same modifier on the other side
  std::uint64_t generic; ///< side-independent event flag (kCGEventFlagMask* in CGEventTypes.h)
  std::uint64_t device;  ///< side-specific event flag (NX_DEVICE*KEYMASK in IOLLEvent.h)
  int keyCode;           ///< macOS virtual key code
  Firmware alone;        ///< when the output is exactly this modifier
  Firmware combined;     ///< in every other output; both sides are then the same key
};

/// In the order of `Modifier::allCases`: the left side first.
inline constexpr std::array<ModifierRow, 8> modifiers{{
    {"left_command", "⌘", 4, 0x100000, 0x8, 55, {"MetaLeft", 91}, {"Meta", 91}},
    {"left_shift", "⇧", 5, 0x20000, 0x2, 56, {"ShiftLeft", 160}, {"Shift", 16}},
    {"left_control", "⌃", 6, 0x40000, 0x1, 59, {"ControlLeft", 162}, {"Control", 17}},
    {"left_option", "⌥", 7, 0x80000, 0x20, 58, {"AltLeft", 164}, {"Alt", 18}},
    {"right_command", "⌘R", 0, 0x100000, 0x10, 54, {"MetaRight", 92}, {"Meta", 91}},
    {"right_shift", "⇧R", 1, 0x20000, 0x4, 60, {"ShiftRight", 161}, {"Shift", 16}},
    {"right_control", "⌃R", 2, 0x40000, 0x2000, 62, {"ControlRight", 163}, {"Control", 17}},
    {"right_option", "⌥R", 3, 0x80000, 0x40, 61, {"AltRight", 165}, {"Alt", 18}},
}};

struct ConsumerRow {
  std::string_view name;
  int auxKey; ///< NX_KEYTYPE_* in IOKit/hidsystem/ev_keymap.h
};

/// "fastforward" is the name for posting only. Captured input calls the same key "fast_forward";
/// the two differ deliberately, so a captured fast-forward key is never posted.
inline constexpr std::array<ConsumerRow, 6> consumers{{
    {"volume_increment", 0},
    {"volume_decrement", 1},
    {"mute", 7},
    {"play_or_pause", 16},
    {"fastforward", 19},
    {"rewind", 20},
}};

/// Mouse buttons are named "button1" to "button32".
inline constexpr int buttonCount = 32;

} // namespace trellivar::keytable
