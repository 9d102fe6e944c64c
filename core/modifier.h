#pragma once

#include "core/key_name.h"
#include "core/key_table.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace trellivar {

/// One of the eight modifier keys.
class Modifier {
public:
  /// The order is the canonical one; the values are rows of `keytable::modifiers`.
  enum Value : std::uint8_t {
    command,
    shift,
    control,
    option,
    rightCommand,
    rightShift,
    rightControl,
    rightOption,
  };
  static const std::array<Modifier, 8> allCases;

  // NOLINTNEXTLINE(google-explicit-constructor): an enumerator is a modifier.
  constexpr Modifier(Value value) noexcept : value_(value) {}
  constexpr operator Value() const noexcept { return value_; } // NOLINT: switch over a modifier

  /// The modifier whose raw value is exactly `text`.
  static std::optional<Modifier> fromRawValue(std::string_view text) noexcept;

  /// The persisted text, which is also the name of the modifier's key: "left_command".
  constexpr std::string_view rawValue() const noexcept { return row().name; }
  KeyName keyName() const;
  /// What people see, such as "⌘" or "⌘R" for the right side.
  constexpr std::string_view symbol() const noexcept { return row().symbol; }
  constexpr bool isLeft() const noexcept { return value_ <= option; }
  constexpr Modifier oppositeSide() const noexcept { return static_cast<Value>(row().opposite); }

  constexpr const keytable::ModifierRow& row() const noexcept {
    return keytable::modifiers[value_];
  }

private:
  Value value_;
};

inline constexpr std::array<Modifier, 8> Modifier::allCases{
    Modifier::command,      Modifier::shift,      Modifier::control,      Modifier::option,
    Modifier::rightCommand, Modifier::rightShift, Modifier::rightControl, Modifier::rightOption,
};

} // namespace trellivar
