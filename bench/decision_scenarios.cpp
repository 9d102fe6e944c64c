#include "bench/decision_scenarios.h"

#include <benchmark/benchmark.h>

namespace trellivar::bench {

namespace {

constexpr std::int64_t pad = 1001;
constexpr std::int64_t stranger = 5;
constexpr auto down = TapEvent::Kind::keyDown;
constexpr auto up = TapEvent::Kind::keyUp;

KeySignature signature(const std::vector<std::string>& names, bool isChord) {
  KeySignature result{{}, isChord};
  for (const std::string& name : names)
    result.codes.push_back({KeyName(name)});
  return result;
}
KeySignature single(const std::string& name) { return signature({name}, false); }
KeySignature chord(const std::vector<std::string>& names) { return signature(names, true); }

/// A pad of a model unknown to the registry whose keys have these signatures.
MappingSet padWith(const std::vector<KeySignature>& signatures) {
  MappingSet set{{"Pad", 1, 2, {}}, {UUID(), "P", {}}, false};
  for (const KeySignature& each : signatures) {
    const int id = static_cast<int>(set.device.layout.keys.size());
    set.device.layout.keys.push_back({id, 0, id, each, {}});
    set.profile.mappings.push_back(
        {id, {Output::Chord{{Modifier::command}, {KeyName("c")}}}, std::nullopt});
  }
  return set;
}

MappingSet writtenPad() {
  MappingSet set = padWith({});
  set.profile.mappings = {{1, {Output::Chord{{Modifier::command}, {KeyName("c")}}}, std::nullopt}};
  set.portable = true;
  return set;
}

auto processorFor(MappingSet set, int otherDevices = 10) {
  return [set = std::move(set), otherDevices] {
    auto processor = std::make_unique<TapProcessor>(Seconds(0.5));
    processor->setTable(MappingTable::compile({&set, 1}));
    TapProcessor::Senders senders{{pad, set.device.identity()}};
    for (int i = 1; i <= otherDevices; ++i)
      senders[pad + i] = set.device.identity();
    processor->setSenders(senders);
    return processor;
  };
}

std::vector<TapEvent> tap(const std::vector<std::string>& names, std::int64_t sender = pad) {
  std::vector<TapEvent> events;
  for (const std::string& name : names)
    events.push_back({sender, down, KeyName(name)});
  for (const std::string& name : names)
    events.push_back({sender, up, KeyName(name)});
  return events;
}

std::vector<KeySignature> twentyTriggers() {
  std::vector<KeySignature> triggers;
  for (char last = 'c'; last <= 'u'; ++last)
    triggers.push_back(chord({"a", "b", {last}}));
  triggers.push_back(chord({"a", "b", "z"}));
  return triggers;
}

std::vector<KeySignature> thousandSingles() {
  std::vector<KeySignature> singles{single("a")};
  for (int i = 1; i < 1000; ++i)
    singles.push_back(single("key" + std::to_string(i)));
  return singles;
}

} // namespace

const std::vector<DecisionScenario>& decisionScenarios() {
  static const std::vector<DecisionScenario> all{
      {"event of an unknown sender",
       processorFor(padWith({single("a")})),
       {{stranger, down, KeyName("a")}},
       8,
       1},
      {"unknown sender among 1,000 devices",
       processorFor(padWith({single("a")}), 1000),
       {{stranger, down, KeyName("a")}},
       8,
       1},
      {"unmapped pad key, passed", processorFor(padWith({single("a")})), tap({"b"}), 20, 1},
      {"single, down and up, an event", processorFor(padWith({single("a")})), tap({"a"}), 25, 1},
      {"single among 1,000 devices, an event", processorFor(padWith({single("a")}), 1000),
       tap({"a"}), 25, 1},
      {"single among 1,000 keys, an event", processorFor(padWith(thousandSingles())), tap({"a"}),
       25, 1},
      {"two-key chord, all four events", processorFor(padWith({chord({"a", "b"})})),
       tap({"a", "b"}), 80, 4},
      {"three-key chord among 20 triggers, an event", processorFor(padWith(twentyTriggers())),
       tap({"a", "b", "z"}), 60, 1},
      {"chord member tapped alone, an event", processorFor(padWith({chord({"a", "b"})})),
       tap({"a"}), 35, 1},
      {"normalised modifier, an event", processorFor(writtenPad()), tap({"right_command"}), 0, 1},
  };
  return all;
}

void play(TapProcessor& processor, const std::vector<TapEvent>& events) {
  constexpr Instant now{};
  for (const TapEvent& event : events) {
    benchmark::DoNotOptimize(processor.process(event, now).begin());
    benchmark::DoNotOptimize(processor.nextDeadline().has_value());
  }
}

} // namespace trellivar::bench
