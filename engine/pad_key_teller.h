#pragma once

#include "engine/main_queue.h"
#include "engine/pad_keys.h"
#include "engine/remap_engine.h"

#include <memory>
#include <vector>

namespace trellivar {

/// Tells an observer which keys are down on pads, in a turn of the queue of its own: an event is
/// answered first, and what changes until then is joined. Since it tells of all keys anew, what
/// makes the engine forget a key also ends it for the observer. Main thread.
class PadKeyTeller {
public:
  /// Both must outlive this.
  PadKeyTeller(MainQueue& queue, const PadKeys& keys) : queue_(queue), keys_(keys) {}
  PadKeyTeller(const PadKeyTeller&) = delete;
  PadKeyTeller& operator=(const PadKeyTeller&) = delete;

  /// Takes the place of the observer before, and ends with the returned handle.
  std::shared_ptr<void> observe(PadKeyObserver observer);
  /// Costs next to nothing while nobody wants to know.
  void keysMayHaveChanged() {
    if (!observer_.expired()) tellSoon();
  }

private:
  void tellSoon();
  void tell();

  MainQueue& queue_;
  const PadKeys& keys_;
  std::weak_ptr<PadKeyObserver> observer_;
  std::vector<DeviceKey> told_; ///< that the observer knows to be down
  WorkItem telling_;
};

} // namespace trellivar
