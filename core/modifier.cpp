#include "core/modifier.h"

namespace trellivar {

std::optional<Modifier> Modifier::fromRawValue(std::string_view text) noexcept {
  for (const Modifier modifier : allCases) {
    if (modifier.rawValue() == text) return modifier;
  }
  return std::nullopt;
}

KeyName Modifier::keyName() const {
  static const auto names = [] {
    std::array<KeyName, allCases.size()> result;
    for (const Modifier modifier : allCases)
      result[modifier] = KeyName(modifier.rawValue());
    return result;
  }();
  return names[value_];
}

} // namespace trellivar
