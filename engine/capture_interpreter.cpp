#include "engine/capture_interpreter.h"

#include "core/recording_classifier.h"

#include <unordered_set>
#include <vector>

namespace trellivar::CaptureInterpreter {

KeySignature signature(std::span<const DeviceKeyEvent> from, int vendorId, int productId) {
  KeySignature signature;
  std::unordered_set<Key> seen;
  std::unordered_set<Key> held;
  for (const DeviceKeyEvent& captured : from) {
    if (captured.identity() != DeviceIdentity{vendorId, productId}) continue;
    const Key& key = captured.event.key;
    if (captured.event.phase == KeyEvent::Phase::up) {
      held.erase(key);
      continue;
    }
    held.insert(key);
    if (held.size() > 1) signature.isChord = true;
    if (seen.insert(key).second) signature.codes.push_back(key);
  }
  return signature;
}

std::optional<Output> output(std::span<const DeviceKeyEvent> from, int excludingVendorId,
                             int productId) {
  std::vector<KeyEvent> events;
  for (const DeviceKeyEvent& captured : from) {
    if (captured.identity() != DeviceIdentity{excludingVendorId, productId})
      events.push_back(captured.event);
  }
  return RecordingClassifier::classify(events);
}

} // namespace trellivar::CaptureInterpreter
