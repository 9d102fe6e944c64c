#pragma once

#include "core/profile.h"

#include <optional>
#include <string>
#include <string_view>

/// Edits of one profile, the same wherever they are made.
namespace trellivar {

/// The first binding of a key; null when it has none.
const KeyMapping* mappingOf(const Profile& profile, int keyId);

/// Binds a key. The binding goes to the end of the list and keeps the label that the key had.
void bindKey(Profile& profile, int keyId, const Output& output);

/// Removes the bindings of a key; false when it has none.
bool unbindKey(Profile& profile, int keyId);

/// Labels the first binding of a key with the trimmed text; nothing left is no label. False when
/// the key has no binding, which could carry one.
bool labelKey(Profile& profile, int keyId, std::string_view text);

} // namespace trellivar
