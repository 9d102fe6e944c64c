#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trellivar {

/// A universally unique identifier (RFC 9562).
class UUID {
public:
  /// The nil identifier, all zero.
  constexpr UUID() noexcept = default;
  /// A fresh random (version 4) identifier.
  static UUID random();
  /// Reads the 36-character text; hexadecimal digits of either case.
  static std::optional<UUID> fromText(std::string_view text);

  /// The 36-character text with upper-case hexadecimal digits.
  std::string text() const;

  friend auto operator<=>(const UUID&, const UUID&) = default;

private:
  std::array<std::uint8_t, 16> bytes_{};
};

} // namespace trellivar
