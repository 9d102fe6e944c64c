#include "core/mapping_table.h"

#include "core/bound_layouts.h"
#include "core/output_events.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <unordered_set>
#include <utility>

namespace trellivar {

namespace {

using CompiledIdentity = MappingTable::CompiledIdentity;
using SingleAction = MappingTable::SingleAction;

bool isUnmappable(const KeySignature& signature) {
  return std::ranges::any_of(signature.codes,
                             [](const Key& key) { return key.kind == Key::Kind::unmappable; });
}

std::vector<KeyName> distinctNames(const KeySignature& signature) {
  std::vector<KeyName> names;
  std::unordered_set<KeyName> seen;
  for (const Key& key : signature.codes) {
    if (seen.insert(key.keyCode).second) names.push_back(key.keyCode);
  }
  return names;
}

void addSignature(CompiledIdentity& entry, const KeySignature& signature,
                  const CompiledOutput& output) {
  if (signature.codes.empty() || isUnmappable(signature)) return;
  const std::vector<KeyName> names = distinctNames(signature);
  if (signature.isChord && names.size() > 1) {
    entry.chords.push_back({{names.begin(), names.end()}, output});
    return;
  }
  entry.singles.insert_or_assign(names.front(), SingleAction{SingleAction::Fire{output}});
  for (const KeyName further : std::span(names).subspan(1))
    entry.singles.try_emplace(further, SingleAction{SingleAction::Swallow{}});
}

void addKey(CompiledIdentity& entry, const PhysicalKey& key, const CompiledOutput& output) {
  addSignature(entry, key.signature, output);
  for (const KeySignature& alternative : key.altSignatures)
    addSignature(entry, alternative, output);
}

/// The modifiers of a combination; one modifier alone is none.
std::span<const Modifier> combinedModifiers(const Output& output) {
  if (const auto* chord = std::get_if<Output::Chord>(&output.value)) return chord->modifiers;
  if (const auto* alone = std::get_if<Output::Modifiers>(&output.value)) {
    if (alone->modifiers.size() >= 2) return alone->modifiers;
  }
  return {};
}

void addPortable(MappingTable& table, const MappingSet& set) {
  std::array<bool, Modifier::allCases.size()> isUsed{};
  for (const KeyMapping& mapping : set.profile.mappings) {
    for (const Modifier modifier : combinedModifiers(mapping.output))
      isUsed[modifier] = true;
  }
  for (const Modifier modifier : Modifier::allCases) {
    if (!modifier.isLeft() || !isUsed[modifier]) continue;
    table.identities[set.device.identity()].normalization.insert_or_assign(
        modifier.oppositeSide().keyName(), modifier.keyName());
  }
}

[[noreturn]] void abortOnDuplicateKeyId(const TrellivarDevice& device, int id) {
  std::fprintf(stderr, "MappingTable: the layout of %s names key %d twice\n", device.name.c_str(),
               id);
  std::abort();
}

constexpr auto idOf = [](const PhysicalKey* key) { return key->id; };

/// Sorted, which for the three keys of a pad costs less than hashing them.
std::vector<const PhysicalKey*> keysById(const KeyLayout& layout, const TrellivarDevice& device) {
  std::vector<const PhysicalKey*> keys;
  keys.reserve(layout.keys.size());
  for (const PhysicalKey& key : layout.keys)
    keys.push_back(&key);
  std::ranges::sort(keys, {}, idOf);
  const auto twice = std::ranges::adjacent_find(keys, {}, idOf);
  if (twice != keys.end()) abortOnDuplicateKeyId(device, idOf(*twice));
  return keys;
}

/// The pad keeps its bindings when it changes its transport, so each transport's identity gets
/// them.
void addCustom(MappingTable& table, const MappingSet& set) {
  std::vector<CompiledOutput> outputs;
  for (const KeyMapping& mapping : set.profile.mappings)
    outputs.emplace_back(mapping.output);
  for (const auto& [identity, layout] : boundLayouts(set.device)) {
    const auto keys = keysById(*layout, set.device);
    CompiledIdentity& entry = table.identities[identity];
    for (std::size_t i = 0; i < outputs.size(); ++i) {
      const int id = set.profile.mappings[i].fromKeyId;
      const auto key = std::ranges::lower_bound(keys, id, {}, idOf);
      if (key != keys.end() && (*key)->id == id) addKey(entry, **key, outputs[i]);
    }
  }
}

void addSet(MappingTable& table, const MappingSet& set) {
  set.portable ? addPortable(table, set) : addCustom(table, set);
}

} // namespace

CompiledOutput::CompiledOutput(Output output)
    : output_(std::move(output)),
      events_(std::make_shared<const std::vector<TapEvent>>(OutputEvents::events(output_))) {}

const MappingTable MappingTable::empty{};

MappingTable MappingTable::compile(std::span<const MappingSet> sets) {
  MappingTable table;
  for (const MappingSet& set : sets)
    addSet(table, set);
  std::erase_if(table.identities, [](const auto& entry) { return entry.second.isEmpty(); });
  return table;
}

} // namespace trellivar
