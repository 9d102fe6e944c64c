#include "engine/darwin/key_monitor.h"

#include "engine/darwin/hid_key_event.h"

#include <utility>

namespace trellivar {

KeyMonitor::KeyMonitor(MainQueue& queue, Callback callback)
    : queue_(queue),
      callback_(std::move(callback)),
      listener_(darwin::keyboardsMiceAndConsumerControls(),
                [this](const darwin::HIDInput& input) { handle(input); }) {}

void KeyMonitor::handle(const darwin::HIDInput& input) {
  auto event = darwin::keyEvent(input);
  if (!event) return;
  const Instant now = queue_.now();
  if (!start_) start_ = now;
  event->event.timestamp = (now - *start_).count();
  callback_(*event);
}

} // namespace trellivar
