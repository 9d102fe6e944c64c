#pragma once

#include "core/tap_processor.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace trellivar::bench {

/// Input that ends as it began, with nothing held, so that it can be played over and over.
struct DecisionScenario {
  std::string name;
  std::function<std::unique_ptr<TapProcessor>()> makeProcessor;
  std::vector<TapEvent> events;
  double limit;       ///< nanoseconds for `limitEvents` events; 0: none
  double limitEvents; ///< how many events the limit speaks of
};

const std::vector<DecisionScenario>& decisionScenarios();

/// Plays the events once, as the engine does: every decision is followed by asking for the
/// deadline.
void play(TapProcessor& processor, const std::vector<TapEvent>& events);

} // namespace trellivar::bench
