#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace trellivar {

/// How the application looks; `system` follows the setting of the system.
enum class AppAppearance : std::uint8_t { dark, light, system };
inline constexpr std::array allAppearances{AppAppearance::dark, AppAppearance::light,
                                           AppAppearance::system};

/// The persisted text: "dark", "light" or "system".
constexpr std::string_view rawValue(AppAppearance appearance) noexcept {
  constexpr std::array<std::string_view, 3> texts{"dark", "light", "system"};
  return texts[static_cast<std::size_t>(appearance)];
}

/// The appearance whose raw value is exactly `text`.
constexpr std::optional<AppAppearance> appearanceFromRawValue(std::string_view text) noexcept {
  for (const AppAppearance appearance : allAppearances) {
    if (rawValue(appearance) == text) return appearance;
  }
  return std::nullopt;
}

} // namespace trellivar
