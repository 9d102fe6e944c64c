#pragma once

#include "core/output.h"
#include "core/trellivar_device.h"
#include "core/uuid.h"

#include <optional>
#include <string>
#include <vector>

namespace trellivar {

/// What one pad key does.
struct KeyMapping {
  int fromKeyId = 0; ///< `PhysicalKey::id`; also the identity of the mapping
  Output output;
  std::optional<std::string> label; ///< the caption that people gave the key

  int id() const noexcept { return fromKeyId; }

  friend bool operator==(const KeyMapping&, const KeyMapping&) = default;
};

/// A named set of bindings. The profile whose name equals a mode id exactly ("P", "M", "R") is the
/// profile of that switch position.
struct Profile {
  UUID id;
  std::string name;
  std::vector<KeyMapping> mappings; ///< meant to hold at most one for each key

  friend bool operator==(const Profile&, const Profile&) = default;
};

/// A profile applied to a device; never persisted.
struct MappingSet {
  TrellivarDevice device; ///< whose layout the key ids refer to
  Profile profile;
  bool portable = false; ///< the bindings live in the pad's own firmware

  friend bool operator==(const MappingSet&, const MappingSet&) = default;
};

} // namespace trellivar
