#include "viewmodels/profile_editing.h"

#include "core/trimmed.h"

#include <algorithm>
#include <utility>

namespace trellivar {

const KeyMapping* mappingOf(const Profile& profile, int keyId) {
  const auto found = std::ranges::find(profile.mappings, keyId, &KeyMapping::fromKeyId);
  return found == profile.mappings.end() ? nullptr : &*found;
}

void bindKey(Profile& profile, int keyId, const Output& output) {
  const KeyMapping* old = mappingOf(profile, keyId);
  KeyMapping mapping{keyId, output, old ? old->label : std::nullopt};
  unbindKey(profile, keyId);
  profile.mappings.push_back(std::move(mapping));
}

bool unbindKey(Profile& profile, int keyId) {
  return std::erase_if(profile.mappings,
                       [&](const KeyMapping& mapping) { return mapping.fromKeyId == keyId; }) > 0;
}

bool labelKey(Profile& profile, int keyId, std::string_view text) {
  const auto found = std::ranges::find(profile.mappings, keyId, &KeyMapping::fromKeyId);
  if (found == profile.mappings.end()) return false;
  const std::string_view label = trimmed(text);
  found->label = label.empty() ? std::nullopt : std::optional(std::string(label));
  return true;
}

} // namespace trellivar
