#include "core/tap_event.h"

namespace trellivar {

std::string_view rawValue(TapEvent::Kind kind) noexcept {
  switch (kind) {
  case TapEvent::Kind::keyDown:
    return "keyDown";
  case TapEvent::Kind::keyUp:
    return "keyUp";
  case TapEvent::Kind::consumerDown:
    return "consumerDown";
  case TapEvent::Kind::consumerUp:
    return "consumerUp";
  case TapEvent::Kind::pointingDown:
    return "pointingDown";
  case TapEvent::Kind::pointingUp:
    return "pointingUp";
  }
  return {};
}

std::optional<TapEvent::Kind> tapEventKindFromRawValue(std::string_view text) noexcept {
  for (const TapEvent::Kind kind : TapEvent::allKinds) {
    if (rawValue(kind) == text) return kind;
  }
  return std::nullopt;
}

} // namespace trellivar
