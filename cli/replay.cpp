#include "cli/replay.h"

#include "cli/input.h"

#include <charconv>
#include <cstdint>
#include <string_view>

namespace trellivar {

namespace {

TapProcessor::Senders decodeSenders(const JsonReader& reader) {
  TapProcessor::Senders senders;
  reader.forEachMember([&](std::string_view key, const JsonReader& identity) {
    std::int64_t id = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), id);
    if (error != std::errc{} || end != key.data() + key.size())
      identity.fail("expected a 64-bit sender id as the key");
    if (!senders.try_emplace(id, identity.as<DeviceIdentity>()).second)
      identity.fail("sender " + std::to_string(id) + " is there twice");
  });
  return senders;
}

TapProcessor::PausedDevices decodePaused(const JsonReader& reader) {
  const auto identities = reader.list<DeviceIdentity>();
  return {identities.begin(), identities.end()};
}

} // namespace

template <> ReplayStep decode<ReplayStep>(const JsonReader& reader) {
  const Instant t{Seconds(reader.member("t").number())};
  int kinds = 0;
  for (const std::string_view key : {"kind", "senders", "paused", "sets", "flush"})
    kinds += reader.has(key);
  if (kinds != 1) reader.fail("expected one of kind, senders, paused, sets and flush");

  if (reader.has("senders")) return {t, decodeSenders(reader.member("senders"))};
  if (reader.has("paused")) return {t, decodePaused(reader.member("paused"))};
  if (reader.has("sets")) return {t, cli::decodeSets(reader)};
  if (reader.has("flush")) {
    const JsonReader flush = reader.member("flush");
    if (!flush.boolean()) flush.fail("expected true");
    return {t, ReplayStep::Flush{}};
  }
  return {t, reader.as<TapEvent>()};
}

namespace cli {

namespace {

class Replayer {
public:
  Replayer(Seconds chordWindow, const std::function<void(const Replayed&)>& report)
      : processor_(chordWindow), report_(report) {}

  void install(const std::vector<MappingSet>& sets) {
    processor_.setTable(MappingTable::compile(sets));
  }

  /// What the engine's timer would have done up to `t`.
  void flushUpTo(Instant t) {
    while (const auto next = processor_.nextDeadline()) {
      if (*next > t) break;
      flush(*next);
    }
  }

  void flushAll() {
    while (const auto next = processor_.nextDeadline())
      flush(*next);
  }

  void play(const ReplayStep& step) {
    now_ = step.t;
    std::visit(*this, step.value);
  }

  void operator()(const TapEvent& event) {
    report_({now_, &event, processor_.process(event, now_)});
  }
  void operator()(const TapProcessor::Senders& senders) { processor_.setSenders(senders); }
  void operator()(const TapProcessor::PausedDevices& paused) { processor_.setPaused(paused); }
  void operator()(const ReplayStep::Sets& sets) { install(sets); }
  void operator()(const ReplayStep::Flush&) { flush(now_); }

private:
  void flush(Instant t) { report_({t, nullptr, processor_.flush(t)}); }

  TapProcessor processor_;
  const std::function<void(const Replayed&)>& report_;
  Instant now_{};
};

} // namespace

void replay(const std::vector<MappingSet>& sets, const std::vector<ReplayStep>& steps,
            Seconds chordWindow, FlushBy flushBy,
            const std::function<void(const Replayed&)>& report) {
  Replayer replayer(chordWindow, report);
  replayer.install(sets);
  for (const ReplayStep& step : steps) {
    if (flushBy == FlushBy::timer) replayer.flushUpTo(step.t);
    replayer.play(step);
  }
  if (flushBy == FlushBy::timer) replayer.flushAll();
}

std::vector<ReplayStep> readRecording(Context& context, const std::string& file) {
  std::vector<ReplayStep> steps;
  forEachRecord(context, file, [&](const JsonReader& record, std::size_t) {
    auto step = record.as<ReplayStep>();
    if (!steps.empty() && step.t < steps.back().t)
      record.member("t").fail("earlier than the record before it");
    steps.push_back(std::move(step));
  });
  return steps;
}

} // namespace cli

} // namespace trellivar
