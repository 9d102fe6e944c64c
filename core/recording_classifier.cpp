#include "core/recording_classifier.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <vector>

namespace trellivar::RecordingClassifier {

namespace {

bool isDownEvent(const KeyEvent& event) { return event.phase == KeyEvent::Phase::down; }

/// The modifiers that these presses name, in canonical order and each once.
std::vector<Modifier> modifiersOf(std::span<const KeyEvent> downs) {
  std::array<bool, Modifier::allCases.size()> isPressed{};
  for (const KeyEvent& down : downs) {
    if (!down.isModifier) continue;
    if (const auto modifier = Modifier::fromRawValue(down.key.keyCode.text()))
      isPressed[*modifier] = true;
  }
  std::vector<Modifier> modifiers;
  for (const Modifier modifier : Modifier::allCases) {
    if (isPressed[modifier]) modifiers.push_back(modifier);
  }
  return modifiers;
}

/// Whether any key went down while another was held. A release without its press belongs to a key
/// that was down before the recording began; it counts for nothing.
bool overlaps(std::span<const KeyEvent> sorted) {
  int held = 0;
  for (const KeyEvent& event : sorted) {
    if (isDownEvent(event)) {
      if (held > 0) return true;
      ++held;
    } else if (held > 0) {
      --held;
    }
  }
  return false;
}

std::vector<Key> keysOf(std::span<const KeyEvent> downs) {
  std::vector<Key> keys;
  for (const KeyEvent& down : downs)
    keys.push_back(down.key);
  return keys;
}

std::vector<Key> distinctPlainKeys(std::span<const KeyEvent> downs) {
  std::vector<Key> keys;
  std::unordered_set<Key> seen;
  for (const KeyEvent& down : downs) {
    if (!down.isModifier && seen.insert(down.key).second) keys.push_back(down.key);
  }
  return keys;
}

} // namespace

std::optional<Output> classify(std::span<const KeyEvent> events) {
  std::vector<KeyEvent> sorted(events.begin(), events.end());
  std::ranges::stable_sort(sorted, {}, &KeyEvent::timestamp);
  std::vector<KeyEvent> downs;
  std::ranges::copy_if(sorted, std::back_inserter(downs), isDownEvent);
  if (downs.empty()) return std::nullopt;

  if (std::ranges::all_of(downs, &KeyEvent::isModifier)) {
    std::vector<Modifier> modifiers = modifiersOf(downs);
    if (modifiers.empty()) return std::nullopt;
    return Output{Output::Modifiers{std::move(modifiers)}};
  }
  if (overlaps(sorted)) {
    const std::vector<Key> keys = distinctPlainKeys(downs);
    if (keys.size() == 1) return Output{Output::Chord{modifiersOf(downs), keys.front()}};
  }
  return Output{Output::Sequence{keysOf(downs)}};
}

} // namespace trellivar::RecordingClassifier
