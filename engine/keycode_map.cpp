#include "engine/keycode_map.h"

#include "core/key_table.h"

#include <string_view>
#include <unordered_map>

namespace trellivar::KeycodeMap {

namespace {

/// Collects steps; a pause that follows a pause is left out.
class MacroBuilder {
public:
  void down(const FirmwareKey& key) { steps_.push_back({MacroEvent::Down{key.name, key.code}}); }
  void up(const FirmwareKey& key) { steps_.push_back({MacroEvent::Up{key.name, key.code}}); }
  void wait() {
    const bool followsWait =
        !steps_.empty() && std::holds_alternative<MacroEvent::Wait>(steps_.back().value);
    if (!followsWait) steps_.push_back({MacroEvent::Wait{stepDelayMs}});
  }
  std::vector<MacroEvent> take() { return std::move(steps_); }

private:
  std::vector<MacroEvent> steps_;
};

FirmwareKey firmwareKey(const keytable::Firmware& row) { return {std::string(row.name), row.code}; }

std::vector<MacroEvent> tapAlone(Modifier modifier) {
  const FirmwareKey key = firmwareKey(modifier.row().alone);
  MacroBuilder macro;
  macro.down(key);
  macro.wait();
  macro.up(key);
  return macro.take();
}

struct MacroOf {
  using Result = std::optional<std::vector<MacroEvent>>;

  Result operator()(const Output::Chord& chord) const {
    const auto key = KeycodeMap::firmwareKey(chord.key);
    if (!key) return std::nullopt;
    return comboMacro(chord.modifiers, {{*key}});
  }
  Result operator()(const Output::Sequence& sequence) const {
    std::vector<FirmwareKey> regulars;
    for (const Key& key : sequence.keys) {
      const auto regular = KeycodeMap::firmwareKey(key);
      if (!regular) return std::nullopt;
      regulars.push_back(*regular);
    }
    return comboMacro({}, regulars);
  }
  Result operator()(const Output::Modifiers& output) const {
    if (output.modifiers.size() == 1) return tapAlone(output.modifiers.front());
    return comboMacro(output.modifiers, {});
  }
};

} // namespace

std::optional<FirmwareKey> firmwareKey(const Key& forKey) {
  static const auto table = [] {
    std::unordered_map<std::string_view, keytable::Firmware> result;
    for (const auto& row : keytable::keys) {
      if (!row.firmware.name.empty()) result.emplace(row.name, row.firmware);
    }
    return result;
  }();
  if (forKey.kind != Key::Kind::keyCode) return std::nullopt;
  const auto found = table.find(forKey.keyCode.text());
  if (found == table.end()) return std::nullopt;
  return firmwareKey(found->second);
}

std::optional<std::vector<MacroEvent>> macro(const Output& forOutput) {
  return std::visit(MacroOf{}, forOutput.value);
}

std::vector<MacroEvent> comboMacro(std::span<const Modifier> mods,
                                   std::span<const FirmwareKey> regulars) {
  MacroBuilder macro;
  for (const Modifier modifier : mods) {
    macro.down(firmwareKey(modifier.row().combined));
    macro.wait();
  }
  for (std::size_t i = 0; i < regulars.size(); ++i) {
    if (i > 0) macro.wait();
    macro.down(regulars[i]);
    macro.wait();
    macro.up(regulars[i]);
  }
  for (auto modifier = mods.rbegin(); modifier != mods.rend(); ++modifier) {
    macro.wait();
    macro.up(firmwareKey(modifier->row().combined));
  }
  return macro.take();
}

} // namespace trellivar::KeycodeMap
