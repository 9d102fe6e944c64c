#include "core/recording_classifier.h"
#include "fuzz/check.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <vector>

using namespace trellivar;

namespace {

KeyEvent consumeEvent(FuzzedDataProvider& input) {
  static const std::array names{KeyName("a"),          KeyName("b"),           KeyName("mute"),
                                KeyName("left_shift"), KeyName("right_shift"), KeyName("fn")};
  KeyEvent event;
  event.key = {input.PickValueInArray(names), input.PickValueInArray(Key::allKinds)};
  event.phase = input.ConsumeBool() ? KeyEvent::Phase::down : KeyEvent::Phase::up;
  event.timestamp = input.ConsumeIntegralInRange(0, 20);
  event.isModifier = input.ConsumeBool();
  return event;
}

} // namespace

/// Events handed over out of order are classified as if in order; without a press there is no
/// output; a sequence holds every press, in order.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  std::vector<KeyEvent> events;
  while (input.remaining_bytes() > 0)
    events.push_back(consumeEvent(input));
  const auto output = RecordingClassifier::classify(events);

  std::ranges::stable_sort(events, {}, &KeyEvent::timestamp);
  FUZZ_CHECK(RecordingClassifier::classify(events) == output);

  std::vector<Key> pressed;
  for (const KeyEvent& event : events) {
    if (event.phase == KeyEvent::Phase::down) pressed.push_back(event.key);
  }
  if (pressed.empty()) FUZZ_CHECK(!output);
  if (!output) return 0;
  if (const auto* sequence = std::get_if<Output::Sequence>(&output->value))
    FUZZ_CHECK(sequence->keys == pressed);
  return 0;
}
