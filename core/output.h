#pragma once

#include "core/key.h"
#include "core/modifier.h"

#include <variant>
#include <vector>

namespace trellivar {

/// What a pad key does. Equality respects the order of modifiers and keys.
struct Output {
  /// Holds the modifiers, presses and releases the key, releases the modifiers.
  struct Chord {
    std::vector<Modifier> modifiers;
    Key key;
    friend bool operator==(const Chord&, const Chord&) = default;
  };
  /// Presses and releases each key in turn.
  struct Sequence {
    std::vector<Key> keys;
    friend bool operator==(const Sequence&, const Sequence&) = default;
  };
  /// Presses and releases modifiers alone.
  struct Modifiers {
    std::vector<Modifier> modifiers;
    friend bool operator==(const Modifiers&, const Modifiers&) = default;
  };

  std::variant<Chord, Sequence, Modifiers> value;

  friend bool operator==(const Output&, const Output&) = default;
};

} // namespace trellivar
