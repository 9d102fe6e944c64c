#pragma once

#include "engine/main_queue.h"

namespace trellivar {

/// The main dispatch queue, which the main run loop drains. For programs without a queue of their
/// own; see `runMainLoop`.
class DispatchMainQueue final : public MainQueue {
public:
  Instant now() const override;
  void async(Block block) override;
  WorkItem asyncAfter(Seconds delay, Block block) override;
};

namespace darwin {

/// Runs the main run loop, and with it the main queue, for a while. Main thread.
void runMainLoop(Seconds duration);

} // namespace darwin

} // namespace trellivar
