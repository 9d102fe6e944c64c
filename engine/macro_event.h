#pragma once

#include <string>
#include <variant>

namespace trellivar {

/// One step of a macro in the pad's firmware.
struct MacroEvent {
  /// Press and hold a firmware key: `k` is its name, `c` its code.
  struct Down {
    std::string k;
    int c = 0;
    friend bool operator==(const Down&, const Down&) = default;
  };
  struct Up {
    std::string k;
    int c = 0;
    friend bool operator==(const Up&, const Up&) = default;
  };
  struct Wait {
    int ms = 0;
    friend bool operator==(const Wait&, const Wait&) = default;
  };

  std::variant<Down, Up, Wait> value;

  /// The step as the pad reads it: compact, members in a fixed order, {"t":"down","k":"A","c":65}.
  std::string json() const;

  friend bool operator==(const MacroEvent&, const MacroEvent&) = default;
};

} // namespace trellivar
