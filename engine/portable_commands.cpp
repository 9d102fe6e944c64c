#include "engine/portable_commands.h"

#include "core/mode_profiles.h"
#include "engine/keycode_map.h"
#include "engine/orlo3_protocol.h"

#include <algorithm>

namespace trellivar {

namespace {

std::vector<KeyMapping> byKey(std::vector<KeyMapping> mappings) {
  std::ranges::stable_sort(mappings, {}, &KeyMapping::fromKeyId);
  return mappings;
}

} // namespace

PortableCommands portableCommands(std::span<const ModeBindings> modes) {
  PortableCommands commands;
  for (const auto& [mode, mappings] : modes) {
    commands.modes.push_back(mode);
    for (const KeyMapping& mapping : byKey(mappings)) {
      const auto macro = KeycodeMap::macro(mapping.output);
      if (!macro) {
        commands.skippedByMode[mode].push_back(mapping.fromKeyId);
        continue;
      }
      commands.lines.push_back(
          Orlo3Protocol::writeKeyMacro(mapping.fromKeyId, mode, "click", *macro, 1));
      commands.targets.push_back({mode, mapping.fromKeyId});
    }
  }
  return commands;
}

std::vector<ModeBindings> portableModes(std::span<const Profile> profiles) {
  std::vector<ModeBindings> modes;
  for (const std::string_view name : modeNames) {
    const auto profile = std::ranges::find(profiles, name, &Profile::name);
    if (profile != profiles.end()) modes.push_back({profile->name, profile->mappings});
  }
  return modes;
}

} // namespace trellivar
