#pragma once

#include "core/instant.h"
#include "engine/key_capturing.h"

#include <gtest/gtest.h>

#include <deque>
#include <utility>
#include <vector>

namespace trellivar {

/// A capturer whose captures end when the test says so. Unlike a real one it lets several run.
class HeldCapturer final : public KeyCapturing {
public:
  struct Capture {
    Seconds maxDuration;
    Completion completion;
  };
  std::deque<Capture> running;  ///< the oldest first
  std::vector<Seconds> started; ///< the durations of all captures so far

  void capture(Seconds maxDuration, Completion completion) override {
    started.push_back(maxDuration);
    running.push_back({maxDuration, std::move(completion)});
  }

  /// Ends the oldest capture.
  void finish(std::vector<DeviceKeyEvent> events = {}) {
    ASSERT_FALSE(running.empty()) << "nothing is being captured";
    Capture capture = std::move(running.front());
    running.pop_front();
    capture.completion(std::move(events));
  }
};

} // namespace trellivar
