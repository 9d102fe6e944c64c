#pragma once

#include "engine/link_clock.h"

#include <chrono>
#include <thread>

namespace trellivar {

/// Sleeps a little where the link would sleep for long; to the link it was long. A reply that is
/// sure to come thus comes in time: the link asks for it 200 times.
class HurriedClock final : public LinkClock {
public:
  explicit HurriedClock(std::chrono::microseconds step) : step_(step) {}
  Instant now() override { return now_; }
  void sleep(Seconds duration) override {
    std::this_thread::sleep_for(step_);
    now_ += duration;
  }

private:
  std::chrono::microseconds step_;
  Instant now_{};
};

} // namespace trellivar
