#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace trellivar {

/// A language that the application speaks.
class AppLanguage {
public:
  enum Value : std::uint8_t {
    en,
    zhHans,
  };
  static const std::array<AppLanguage, 2> allCases;

  // NOLINTNEXTLINE(google-explicit-constructor): an enumerator is a language.
  constexpr AppLanguage(Value value) noexcept : value_(value) {}
  constexpr operator Value() const noexcept { return value_; } // NOLINT: switch over a language

  /// The language whose raw value is exactly `text`.
  static std::optional<AppLanguage> fromRawValue(std::string_view text) noexcept;

  /// The language for someone who has not chosen one. Only the first preference counts; every
  /// variant of Chinese selects `zhHans`, and everything else, also no preference at all, selects
  /// `en`.
  static AppLanguage systemDefault(std::span<const std::string> preferredLanguages) noexcept;

  /// The persisted text: "en" or "zh-Hans".
  constexpr std::string_view rawValue() const noexcept {
    return value_ == zhHans ? "zh-Hans" : "en";
  }

private:
  Value value_;
};

inline constexpr std::array<AppLanguage, 2> AppLanguage::allCases{
    AppLanguage::en,
    AppLanguage::zhHans,
};

} // namespace trellivar
