#include "core/app_language.h"

namespace trellivar {

std::optional<AppLanguage> AppLanguage::fromRawValue(std::string_view text) noexcept {
  for (const AppLanguage language : allCases) {
    if (language.rawValue() == text) return language;
  }
  return std::nullopt;
}

AppLanguage AppLanguage::systemDefault(std::span<const std::string> preferredLanguages) noexcept {
  if (preferredLanguages.empty()) return en;
  return preferredLanguages.front().starts_with("zh") ? zhHans : en;
}

} // namespace trellivar
