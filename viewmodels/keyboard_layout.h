#pragma once

#include "core/key.h"
#include "core/modifier.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace trellivar {

/// One place of the keyboard that shortcuts are composed on.
struct KeyDef {
  struct Role {
    /// Becomes the key of the shortcut.
    struct Base {
      Key key;
      friend bool operator==(const Base&, const Base&) = default;
    };
    /// Held down or not.
    struct Modifier {
      trellivar::Modifier modifier;
      friend bool operator==(const Modifier&, const Modifier&) = default;
    };
    /// A gap.
    struct Spacer {
      friend bool operator==(const Spacer&, const Spacer&) = default;
    };

    std::variant<Base, Modifier, Spacer> value;
    friend bool operator==(const Role&, const Role&) = default;
  };

  std::string id; ///< unique in the layout; "mod-…" for a modifier, "spacer-…" for a gap
  std::string label;
  double width = 1.0; ///< in units of an ordinary key
  Role role;

  friend bool operator==(const KeyDef&, const KeyDef&) = default;
};

/// A US keyboard, from top to bottom. Fixed data; main thread.
namespace KeyboardLayout {

/// All of the same width.
const std::vector<std::vector<KeyDef>>& rows();

/// What stands on the key with this name: its label in the layout; for other names of one character
/// that character in upper case, for all others the name itself.
std::string displayLabel(std::string_view forKeyCode);

} // namespace KeyboardLayout

} // namespace trellivar
