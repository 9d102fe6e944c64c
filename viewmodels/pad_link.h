#pragma once

#include <string>
#include <variant>

namespace trellivar {

/// How the pad is connected.
struct PadLink {
  struct Wireless {
    std::string name; ///< of the device, without blanks at its ends
    friend bool operator==(const Wireless&, const Wireless&) = default;
  };
  struct Usb {
    friend bool operator==(const Usb&, const Usb&) = default;
  };
  struct Disconnected {
    friend bool operator==(const Disconnected&, const Disconnected&) = default;
  };

  std::variant<Disconnected, Wireless, Usb> value;

  template <class Case> bool is() const noexcept { return std::holds_alternative<Case>(value); }

  friend bool operator==(const PadLink&, const PadLink&) = default;
};

} // namespace trellivar
