#include "engine/hid_usages.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace trellivar::hid {

namespace {

struct UsageName {
  std::uint32_t usage;
  std::string_view name;
};

constexpr std::array keyboardNames{
    UsageName{0x27, "0"},
    UsageName{0x28, "return_or_enter"},
    UsageName{0x29, "escape"},
    UsageName{0x2A, "delete_or_backspace"},
    UsageName{0x2B, "tab"},
    UsageName{0x2C, "spacebar"},
    UsageName{0xE0, "left_control"},
    UsageName{0xE1, "left_shift"},
    UsageName{0xE2, "left_option"},
    UsageName{0xE3, "left_command"},
    UsageName{0xE4, "right_control"},
    UsageName{0xE5, "right_shift"},
    UsageName{0xE6, "right_option"},
    UsageName{0xE7, "right_command"},
};

/// The tables of the usage page call 181 and 182 next and previous track; captures have always
/// called them this, and learned keys are stored under these names.
constexpr std::array consumerNames{
    UsageName{0xB5, "fast_forward"},     UsageName{0xB6, "rewind"},
    UsageName{0xCD, "play_or_pause"},    UsageName{0xE2, "mute"},
    UsageName{0xE9, "volume_increment"}, UsageName{0xEA, "volume_decrement"},
};

constexpr std::uint32_t buttonCount = 3;

KeyName nameIn(std::span<const UsageName> table, std::uint32_t usage) {
  for (const UsageName& row : table) {
    if (row.usage == usage) return KeyName(row.name);
  }
  return {};
}

KeyName character(char first, std::uint32_t offset) {
  const char c = static_cast<char>(static_cast<std::uint32_t>(first) + offset);
  return KeyName(std::string_view(&c, 1));
}

std::optional<Key> known(KeyName name, Key::Kind kind) {
  if (name == KeyName()) return std::nullopt;
  return Key{name, kind};
}

} // namespace

KeyName keyCode(std::uint32_t forUsage) {
  if (forUsage >= 0x04 && forUsage <= 0x1D) return character('a', forUsage - 0x04);
  if (forUsage >= 0x1E && forUsage <= 0x26) return character('1', forUsage - 0x1E);
  return nameIn(keyboardNames, forUsage);
}

KeyName consumerCode(std::uint32_t forUsage) { return nameIn(consumerNames, forUsage); }

std::optional<Key> key(std::uint32_t usagePage, std::uint32_t usage) {
  switch (usagePage) {
  case keyboardPage:
    return known(keyCode(usage), Key::Kind::keyCode);
  case consumerPage:
    return known(consumerCode(usage), Key::Kind::consumerKeyCode);
  case buttonPage:
    if (usage < 1 || usage > buttonCount) return std::nullopt;
    return Key{KeyName("button" + std::to_string(usage)), Key::Kind::pointingButton};
  case digitizerPage:
    return Key{KeyName("digitizer_" + std::to_string(usage)), Key::Kind::unmappable};
  default:
    return std::nullopt;
  }
}

} // namespace trellivar::hid
