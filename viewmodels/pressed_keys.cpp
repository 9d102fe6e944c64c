#include "viewmodels/pressed_keys.h"

#include "core/bound_layouts.h"

#include <algorithm>
#include <span>
#include <utility>

namespace trellivar {

namespace {

using Names = std::set<KeyName, KeyName::ByText>;

struct Match {
  int keyId;
  Names names;
};

/// What has to be down for the signature to fire; of keys that come one after another, the first.
Names firing(const KeySignature& signature) {
  Names names;
  for (const Key& code : signature.codes) {
    names.insert(code.keyCode);
    if (!signature.isChord) break;
  }
  return names;
}

std::vector<Match> matches(const KeyLayout& layout, const Names& down) {
  std::vector<Match> result;
  const auto match = [&](int keyId, const KeySignature& signature) {
    Names names = firing(signature);
    if (!names.empty() && std::ranges::includes(down, names, KeyName::ByText()))
      result.push_back({keyId, std::move(names)});
  };
  for (const PhysicalKey& key : layout.keys) {
    match(key.id, key.signature);
    for (const KeySignature& alternative : key.altSignatures)
      match(key.id, alternative);
  }
  return result;
}

/// A chord that is complete speaks for all of its keys: one that another pad key sends alone is not
/// that other key.
std::set<int> keysDown(const KeyLayout& layout, const Names& down) {
  const std::vector<Match> all = matches(layout, down);
  std::set<int> ids;
  for (const Match& match : all) {
    const bool isPartOfAnother = std::ranges::any_of(all, [&](const Match& other) {
      return other.names.size() > match.names.size() &&
             std::ranges::includes(other.names, match.names, KeyName::ByText());
    });
    if (!isPartOfAnother) ids.insert(match.keyId);
  }
  return ids;
}

} // namespace

PressedKeys::PressedKeys(RemapEngine& engine, const Published<TrellivarDevice>& device)
    : deviceChanges_(
          device.willChange([this](const TrellivarDevice& next) { ids_.set(idsOn(next)); })),
      keyChanges_(engine.onPadKeysChanged([this, &device](std::span<const DeviceKey> down) {
        down_.assign(down.begin(), down.end());
        ids_.set(idsOn(*device));
      })) {}

std::set<int> PressedKeys::idsOn(const TrellivarDevice& device) const {
  std::set<int> ids;
  for (const BoundLayout& bound : boundLayouts(device)) {
    Names names;
    for (const DeviceKey& key : down_) {
      if (key.device == bound.identity) names.insert(key.name);
    }
    ids.merge(keysDown(*bound.layout, names));
  }
  return ids;
}

} // namespace trellivar
