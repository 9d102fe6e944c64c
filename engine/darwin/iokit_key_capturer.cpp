#include "engine/darwin/iokit_key_capturer.h"

#include "engine/darwin/hid_key_event.h"
#include "engine/log.h"

#include <algorithm>
#include <string>
#include <utility>

namespace trellivar {

namespace {

void logOpening(int attempt, IOReturn result) {
  const std::string answer = "IOHIDManagerOpen=" + std::to_string(result) + " (0=ok)";
  if (attempt == 1)
    debugLog("capture start — " + answer +
             ". If 0 but no events follow, Input Monitoring is NOT granted.");
  else
    debugLog("capture re-open attempt " + std::to_string(attempt) + " — " + answer);
}

void logEvent(const DeviceKeyEvent& captured, int held) {
  const KeyEvent& event = captured.event;
  const char* phase = event.phase == KeyEvent::Phase::down ? "down" : "up";
  debugLog("  event: " + event.key.keyCode.text() + " [" + phase +
           "] vid=" + std::to_string(captured.vendorId) +
           " pid=" + std::to_string(captured.productId) + " held=" + std::to_string(held));
}

} // namespace

void IOKitKeyCapturer::capture(Seconds maxDuration, Completion completion) {
  if (completion_) {
    // Not within this call: whoever hears of its end may want to capture again.
    std::erase_if(superseded_, [](const WorkItem& work) { return !work.isPending(); });
    superseded_.push_back(
        queue_.asyncAfter(Seconds::zero(), [completion = std::exchange(completion_, nullptr),
                                            events = stop()] { completion(events); }));
  }
  completion_ = std::move(completion);
  events_.clear();
  held_ = 0;
  openDeadline_ = queue_.now() + std::min(maxDuration, longestReopening);
  open(1);
  overallWork_ = queue_.asyncAfter(maxDuration, [this] { finish(); });
}

/// Each attempt takes a listener of its own, since one that was refused stays refused.
void IOKitKeyCapturer::open(int attempt) {
  listener_.reset();
  listener_.emplace(darwin::keyboardsMiceAndConsumerControls(),
                    [this](const darwin::HIDInput& input) { handle(input); });
  const IOReturn result = listener_->openResult();
  logOpening(attempt, result);
  if (result == kIOReturnSuccess || queue_.now() >= openDeadline_) return;
  reopenWork_ = queue_.asyncAfter(reopenInterval, [this, attempt] {
    if (events_.empty()) open(attempt + 1);
  });
}

void IOKitKeyCapturer::handle(const darwin::HIDInput& input) {
  auto captured = darwin::keyEvent(input);
  if (!completion_ || !captured) return;
  const Instant now = queue_.now();
  if (events_.empty()) start_ = now;
  captured->event.timestamp = (now - start_).count();
  const bool isDown = captured->event.phase == KeyEvent::Phase::down;
  held_ = isDown ? held_ + 1 : std::max(held_ - 1, 0);
  logEvent(*captured, held_);
  events_.push_back(*captured);

  if (held_ == 0)
    settleWork_ = queue_.asyncAfter(settleInterval, [this] { finish(); });
  else
    settleWork_.cancel();
}

/// Ends listening and every timer; what was heard is the result.
std::vector<DeviceKeyEvent> IOKitKeyCapturer::stop() {
  debugLog("capture finish — " + std::to_string(events_.size()) + " event(s) captured");
  settleWork_.cancel();
  overallWork_.cancel();
  reopenWork_.cancel();
  listener_.reset();
  return std::exchange(events_, {});
}

void IOKitKeyCapturer::finish() {
  if (!completion_) return;
  auto events = stop();
  std::exchange(completion_, nullptr)(std::move(events));
}

} // namespace trellivar
