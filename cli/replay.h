#pragma once

#include "cli/context.h"
#include "cli/diagnostics_json.h"
#include "core/instant.h"
#include "core/tap_processor.h"

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace trellivar {

/// One line of a recording: an event, or a change of what the processor knows.
struct ReplayStep {
  struct Flush {};
  using Sets = std::vector<MappingSet>;

  Instant t;
  std::variant<TapEvent, TapProcessor::Senders, TapProcessor::PausedDevices, Sets, Flush> value;
};

template <> ReplayStep decode<ReplayStep>(const JsonReader& reader);

namespace cli {

/// Who flushes overdue chords: a timer at each deadline, as in the engine, or only the recording.
enum class FlushBy { timer, recording };

/// What the processor answered to an event, or to a flush.
struct Replayed {
  Instant t;
  const TapEvent* event; ///< null for a flush
  const TapActions& actions;
};

/// Plays a recording, in time order, through a tap processor, and reports each event and each
/// flush.
void replay(const std::vector<MappingSet>& sets, const std::vector<ReplayStep>& steps,
            Seconds chordWindow, FlushBy flushBy,
            const std::function<void(const Replayed&)>& report);

/// A recording, JSON Lines. Throws BadInput, also for records that go back in time; Failure.
std::vector<ReplayStep> readRecording(Context& context, const std::string& file);

} // namespace cli

} // namespace trellivar
