#pragma once

#include "core/key_name.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace trellivar {

/// One press or release, as the tap processor takes it in and hands it out.
struct TapEvent {
  enum class Kind : std::uint8_t {
    keyDown,
    keyUp,
    consumerDown,
    consumerUp,
    pointingDown,
    pointingUp,
  };
  static constexpr std::array allKinds{Kind::keyDown,    Kind::keyUp,        Kind::consumerDown,
                                       Kind::consumerUp, Kind::pointingDown, Kind::pointingUp};

  /// The system's id of the physical device behind the event; 0 in events that the engine makes.
  std::int64_t senderId = 0;
  Kind kind = Kind::keyDown;
  KeyName name;

  friend bool operator==(const TapEvent&, const TapEvent&) = default;
};

constexpr bool isDown(TapEvent::Kind kind) noexcept {
  return kind == TapEvent::Kind::keyDown || kind == TapEvent::Kind::consumerDown ||
         kind == TapEvent::Kind::pointingDown;
}

/// The release that belongs to a press.
constexpr TapEvent::Kind releaseOf(TapEvent::Kind press) noexcept {
  switch (press) {
  case TapEvent::Kind::consumerDown:
    return TapEvent::Kind::consumerUp;
  case TapEvent::Kind::pointingDown:
    return TapEvent::Kind::pointingUp;
  default:
    return TapEvent::Kind::keyUp;
  }
}

/// The name of the case, "keyDown" and so on.
std::string_view rawValue(TapEvent::Kind kind) noexcept;
std::optional<TapEvent::Kind> tapEventKindFromRawValue(std::string_view text) noexcept;

} // namespace trellivar
