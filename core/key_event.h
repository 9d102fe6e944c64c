#pragma once

#include "core/key.h"

#include <cstdint>

namespace trellivar {

/// One recorded press or release.
struct KeyEvent {
  enum class Phase : std::uint8_t { down, up };

  Key key;
  Phase phase = Phase::down;
  double timestamp = 0; ///< seconds; only the order matters
  bool isModifier = false;

  friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

} // namespace trellivar
