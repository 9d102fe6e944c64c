#pragma once

#include "core/key_name.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Key names to what macOS event services need, and back. Pure look-ups on tables that are built
/// once on first use; every function may be called on any thread, allocates nothing, and answers an
/// unknown name or number with none.
namespace trellivar::CGKeycodeMap {

struct ModifierBits {
  std::uint64_t generic; ///< side-independent event flag
  std::uint64_t device;  ///< side-specific event flag
  int keyCode;           ///< macOS virtual key code

  friend bool operator==(const ModifierBits&, const ModifierBits&) = default;
};

/// The macOS virtual key code of an ordinary or modifier key.
std::optional<int> keyCode(std::string_view forName);
/// The ordinary or modifier key with a macOS virtual key code.
std::optional<KeyName> name(int forKeyCode);
/// The event flags of a modifier key.
std::optional<ModifierBits> modifier(std::string_view forName);
/// The auxiliary key type (NX_KEYTYPE_*) that media-key events carry.
std::optional<int> auxKey(std::string_view forConsumerName);
std::optional<KeyName> consumerName(int forAuxKey);
/// The zero-based button of "button1" to "button32".
std::optional<int> buttonNumber(std::string_view forPointingName);
std::optional<KeyName> pointingName(int forButtonNumber);

} // namespace trellivar::CGKeycodeMap
