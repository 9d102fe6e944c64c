#include "core/tap_processor.h"

#include "fuzz/check.h"
#include "tests/core/naive_tap_processor.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>

using namespace trellivar;

namespace {

const std::array names{KeyName("a"), KeyName("b"), KeyName("c"), KeyName("left_control"),
                       KeyName("mute")};
constexpr std::array<DeviceIdentity, 3> identities{{{1, 1}, {1, 2}, {2, 1}}};
constexpr std::array<std::int64_t, 4> senders{1, 2, -7, 99};

KeySignature consumeSignature(FuzzedDataProvider& input) {
  KeySignature signature{{}, input.ConsumeBool()};
  for (int left = input.ConsumeIntegralInRange(1, 4); left > 0; --left)
    signature.codes.push_back({input.PickValueInArray(names)});
  return signature;
}

/// A device of up to eight keys, each bound to a key of its own.
MappingSet consumeSet(FuzzedDataProvider& input) {
  const DeviceIdentity identity = input.PickValueInArray(identities);
  MappingSet set{{"pad", identity.vendorId, identity.productId, {}}, {}, input.ConsumeBool()};
  for (int id = input.ConsumeIntegralInRange(0, 8); id > 0; --id) {
    set.device.layout.keys.push_back({id, 0, id, consumeSignature(input), {}});
    const Key output{KeyName("output" + std::to_string(id))};
    set.profile.mappings.push_back(
        {id, {Output::Chord{{Modifier::command}, output}}, std::nullopt});
  }
  return set;
}

/// The processor beside its naive twin.
class Twins {
public:
  void step(FuzzedDataProvider& input) {
    now_ += input.PickValueInArray({0.0, 0.0, 0.1, 0.25, 0.5});
    switch (input.ConsumeIntegralInRange(0, 19)) {
    case 0:
      return changeTable(input);
    case 1:
      return changeSenders(input);
    case 2:
      return changePaused(input);
    case 3:
      return compare(real_.flush(at()), naive_.flush(now_));
    default:
      return send(input);
    }
  }

private:
  Instant at() const { return Instant(Seconds(now_)); }

  void compare(const TapActions& real, const NaiveTapProcessor::Actions& naive) const {
    FUZZ_CHECK(plainly(real) == naive);
    const auto deadline = real_.nextDeadline();
    const auto expected = naive_.nextDeadline();
    FUZZ_CHECK(deadline.has_value() == expected.has_value());
    if (deadline) FUZZ_CHECK(deadline->time_since_epoch().count() == *expected);
  }

  void changeTable(FuzzedDataProvider& input) {
    std::vector<MappingSet> sets;
    for (int left = input.ConsumeIntegralInRange(0, 3); left > 0; --left)
      sets.push_back(consumeSet(input));
    naive_.setTable(MappingTable::compile(sets));
    real_.setTable(MappingTable::compile(sets));
  }

  void changeSenders(FuzzedDataProvider& input) {
    naive_.senders.clear();
    for (const std::int64_t sender : senders) {
      if (input.ConsumeBool()) naive_.senders[sender] = input.PickValueInArray(identities);
    }
    real_.setSenders({naive_.senders.begin(), naive_.senders.end()});
  }

  void changePaused(FuzzedDataProvider& input) {
    naive_.paused.clear();
    if (input.ConsumeBool()) naive_.paused.insert(input.PickValueInArray(identities));
    real_.setPaused({naive_.paused.begin(), naive_.paused.end()});
  }

  void send(FuzzedDataProvider& input) {
    const TapEvent event{input.PickValueInArray(senders),
                         input.PickValueInArray(TapEvent::allKinds), input.PickValueInArray(names)};
    const auto expected = naive_.process(event, now_);
    compare(real_.process(event, at()), expected);
  }

  double now_ = 0;
  TapProcessor real_{Seconds(0.5)};
  NaiveTapProcessor naive_{0.5};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  Twins twins;
  while (input.remaining_bytes() > 0)
    twins.step(input);
  return 0;
}
