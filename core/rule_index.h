#pragma once

#include "core/flat_map.h"
#include "core/mapping_table.h"

#include <optional>
#include <vector>

namespace trellivar {

/// What one compiled identity says about one key name.
struct NameRules {
  struct Candidate {
    std::vector<KeyName> members; ///< distinct
    const SharedEvents* events = nullptr;
  };
  /// The chord triggers that contain the name, in the table's order.
  std::vector<Candidate> candidates;
  const MappingTable::SingleAction* single = nullptr;
  std::optional<KeyName> normalized;
};

/// A compiled identity turned round for the event path: from a key name to all that concerns it, in
/// one look-up that costs the same however many other names there are.
class RuleIndex {
public:
  /// Requires: `identity` outlives the index and does not change.
  explicit RuleIndex(const MappingTable::CompiledIdentity& identity);

  /// Never null; names that nothing is known about share one empty entry.
  const NameRules& of(KeyName name) const noexcept {
    const NameRules* found = byName_.find(name);
    return found ? *found : none_;
  }

private:
  struct NameHash {
    std::uint64_t operator()(KeyName name) const noexcept { return name.hash(); }
  };

  FlatMap<KeyName, NameRules, NameHash> byName_;
  NameRules none_;
};

} // namespace trellivar
