#pragma once

#include "core/output.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// A shortcut put together from the modifiers and the key that someone has chosen.
namespace trellivar::ShortcutComposer {

/// A chord with a base key, the modifiers alone without one; none without either.
std::optional<Output> output(std::span<const Modifier> modifiers,
                             const std::optional<Key>& baseKey);

/// "⌘ ⇧ K", in the order given; empty when nothing is chosen.
std::string preview(std::span<const Modifier> modifiers,
                    const std::optional<std::string_view>& baseLabel);

} // namespace trellivar::ShortcutComposer
