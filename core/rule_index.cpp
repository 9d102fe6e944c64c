#include "core/rule_index.h"

namespace trellivar {

RuleIndex::RuleIndex(const MappingTable::CompiledIdentity& identity) {
  for (const auto& trigger : identity.chords) {
    const NameRules::Candidate candidate{{trigger.members.begin(), trigger.members.end()},
                                         &trigger.output.events()};
    for (const KeyName member : trigger.members)
      byName_[member].candidates.push_back(candidate);
  }
  for (const auto& [name, single] : identity.singles)
    byName_[name].single = &single;
  for (const auto& [name, target] : identity.normalization)
    byName_[name].normalized = target;
}

} // namespace trellivar
