#include "viewmodels/shortcut_composer.h"

#include <vector>

namespace trellivar {

std::optional<Output> ShortcutComposer::output(std::span<const Modifier> modifiers,
                                               const std::optional<Key>& baseKey) {
  const std::vector<Modifier> held(modifiers.begin(), modifiers.end());
  if (baseKey) return Output{Output::Chord{held, *baseKey}};
  if (!held.empty()) return Output{Output::Modifiers{held}};
  return std::nullopt;
}

std::string ShortcutComposer::preview(std::span<const Modifier> modifiers,
                                      const std::optional<std::string_view>& baseLabel) {
  std::string text;
  const auto append = [&](std::string_view part) { (text += text.empty() ? "" : " ") += part; };
  for (const Modifier modifier : modifiers)
    append(modifier.symbol());
  if (baseLabel) append(*baseLabel);
  return text;
}

} // namespace trellivar
