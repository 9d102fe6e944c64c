#pragma once

#include "core/key.h"
#include "core/output.h"
#include "engine/macro_event.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

/// Outputs to the pad's firmware. Pure; the tables are built once, on first use.
namespace trellivar::KeycodeMap {

/// A key of the pad's firmware: a name in the style of the web's keyboard event codes and a number
/// in the Windows virtual-key numbering.
struct FirmwareKey {
  std::string name;
  int code = 0;
  friend bool operator==(const FirmwareKey&, const FirmwareKey&) = default;
};

/// The pause between two steps of every macro.
inline constexpr int stepDelayMs = 30;

/// The firmware's key; none for every key that is not one of its 45 plain keys.
std::optional<FirmwareKey> firmwareKey(const Key& forKey);

/// The macro that plays an output. None when the firmware has no equivalent for one of its keys; an
/// empty macro, for an output without keys, is a different answer.
///
/// One modifier alone uses the sided form ("ShiftRight", 161); within every other output both sides
/// are the same key ("Shift", 16). The firmware knows no other form there.
std::optional<std::vector<MacroEvent>> macro(const Output& forOutput);

/// Presses the modifiers, taps the keys one after another, releases the modifiers in reverse order,
/// with a pause between any two steps.
std::vector<MacroEvent> comboMacro(std::span<const Modifier> mods,
                                   std::span<const FirmwareKey> regulars);

} // namespace trellivar::KeycodeMap
