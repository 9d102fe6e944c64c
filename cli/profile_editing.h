#pragma once

#include "core/profile.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Edits of a profile, in the way that the application makes them.
namespace trellivar::cli {

/// The first binding of a key; null when it has none.
KeyMapping* mappingOf(Profile& profile, int keyId);

/// Binds a key. The binding goes to the end of the list; it takes `label`, or keeps the one it had.
void bindKey(Profile& profile, int keyId, const Output& output,
             const std::optional<std::string>& label);

/// Removes the binding of a key; false when it has none.
bool unbindKey(Profile& profile, int keyId);

/// A label as it is stored: trimmed; none when nothing is left.
std::optional<std::string> labelFrom(std::string_view text);

} // namespace trellivar::cli
