#include "core/key.h"

namespace trellivar {

std::string_view rawValue(Key::Kind kind) noexcept {
  switch (kind) {
  case Key::Kind::keyCode:
    return "keyCode";
  case Key::Kind::consumerKeyCode:
    return "consumerKeyCode";
  case Key::Kind::pointingButton:
    return "pointingButton";
  case Key::Kind::unmappable:
    return "unmappable";
  }
  return {};
}

std::optional<Key::Kind> kindFromRawValue(std::string_view text) noexcept {
  for (const Key::Kind kind : Key::allKinds) {
    if (rawValue(kind) == text) return kind;
  }
  return std::nullopt;
}

} // namespace trellivar
