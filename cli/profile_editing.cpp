#include "cli/profile_editing.h"

#include "core/trimmed.h"

#include <algorithm>

namespace trellivar::cli {

KeyMapping* mappingOf(Profile& profile, int keyId) {
  const auto found = std::ranges::find(profile.mappings, keyId, &KeyMapping::fromKeyId);
  return found == profile.mappings.end() ? nullptr : &*found;
}

void bindKey(Profile& profile, int keyId, const Output& output,
             const std::optional<std::string>& label) {
  const KeyMapping* old = mappingOf(profile, keyId);
  KeyMapping mapping{keyId, output, old ? old->label : std::nullopt};
  if (label) mapping.label = labelFrom(*label);
  unbindKey(profile, keyId);
  profile.mappings.push_back(std::move(mapping));
}

bool unbindKey(Profile& profile, int keyId) {
  return std::erase_if(profile.mappings,
                       [&](const KeyMapping& mapping) { return mapping.fromKeyId == keyId; }) > 0;
}

std::optional<std::string> labelFrom(std::string_view text) {
  const std::string_view label = trimmed(text);
  if (label.empty()) return std::nullopt;
  return std::string(label);
}

} // namespace trellivar::cli
