#include "tests/app/journeys/stored.h"

#include "core/profile_store.h"
#include "core/signature_store.h"

#include <algorithm>
#include <span>
#include <variant>

namespace trellivar {

namespace {

void append(std::string& list, std::string_view between, std::string_view item) {
  if (!list.empty()) list += between;
  list += item;
}

std::string words(const Key& key) {
  std::string name = key.keyCode.text();
  if (key.kind == Key::Kind::consumerKeyCode) name += ":media";
  if (key.kind == Key::Kind::pointingButton) name += ":mouse";
  if (key.kind == Key::Kind::unmappable) name += ":unmappable";
  return name;
}

std::string words(std::span<const Key> keys, std::string_view between) {
  std::string list;
  for (const Key& key : keys)
    append(list, between, words(key));
  return list;
}

std::string words(std::span<const Modifier> modifiers) {
  std::string list;
  for (const Modifier modifier : modifiers)
    append(list, "+", modifier.rawValue());
  return list;
}

struct OutputWords {
  std::string operator()(const Output::Chord& chord) const {
    std::string all = words(chord.modifiers);
    append(all, "+", words(chord.key));
    return all;
  }
  std::string operator()(const Output::Sequence& sequence) const {
    return '[' + words(sequence.keys, " ") + ']';
  }
  std::string operator()(const Output::Modifiers& held) const { return words(held.modifiers); }
};

} // namespace

std::string storedBindings(const std::filesystem::path& folder, std::string_view mode) {
  const auto profiles = ProfileStore(folder).load();
  const auto found = std::ranges::find(profiles, mode, &Profile::name);
  if (found == profiles.end()) return "no profile";
  std::string list;
  for (const KeyMapping& mapping : found->mappings) {
    append(list, ", ",
           std::to_string(mapping.fromKeyId) + ' ' +
               std::visit(OutputWords{}, mapping.output.value));
    if (mapping.label) list += " = " + *mapping.label;
  }
  return list;
}

std::string storedSignatures(const std::filesystem::path& folder) {
  std::string list;
  for (const StoredDeviceSignatures& device : SignatureStore(folder).load()) {
    for (const StoredKeySignature& key : device.keySignatures)
      append(list, ", ",
             device.modeId.value_or("?") + ' ' + std::to_string(key.keyId) + ' ' +
                 words(key.signature.codes, "+"));
  }
  return list;
}

} // namespace trellivar
