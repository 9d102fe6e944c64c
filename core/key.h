#pragma once

#include "core/key_name.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace trellivar {

/// A key that the system sends or has seen.
struct Key {
  /// Which family the name belongs to.
  enum class Kind : std::uint8_t {
    keyCode,         ///< an ordinary or modifier key of the keyboard
    consumerKeyCode, ///< a media key
    pointingButton,  ///< a mouse button
    unmappable,      ///< a key that the system cannot post; it never produces output
  };
  static constexpr std::array allKinds{Kind::keyCode, Kind::consumerKeyCode, Kind::pointingButton,
                                       Kind::unmappable};

  KeyName keyCode;
  Kind kind = Kind::keyCode;

  friend bool operator==(const Key&, const Key&) = default;
};

/// The persisted text of a kind, equal to the name of its case.
std::string_view rawValue(Key::Kind kind) noexcept;
std::optional<Key::Kind> kindFromRawValue(std::string_view text) noexcept;

} // namespace trellivar

template <> struct std::hash<trellivar::Key> {
  std::size_t operator()(const trellivar::Key& key) const noexcept {
    return std::hash<trellivar::KeyName>{}(key.keyCode) * 4 + static_cast<std::size_t>(key.kind);
  }
};
