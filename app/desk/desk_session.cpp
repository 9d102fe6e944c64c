#include "app/desk/desk_session.h"

#include "engine/orlo3_serial_link.h"

#include <QMetaObject>
#include <algorithm>
#include <chrono>

namespace trellivar {

namespace {

Instant steadyNow() { return Instant(std::chrono::steady_clock::now().time_since_epoch()); }

} // namespace

DeskSession::DeskSession() : machine_(std::make_unique<desk::Machine>()) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { run(); });
  machine_->desk.events().setRecording(false);
  machine_->desk.queue().follow(steadyNow, [this] {
    if (!isRunDue_.exchange(true))
      QMetaObject::invokeMethod(
          &timer_, [this] { run(); }, Qt::QueuedConnection);
  });
}

DeskSession::~DeskSession() = default;

void DeskSession::run() {
  isRunDue_ = false;
  desk::ManualQueue& queue = machine_->desk.queue();
  queue.run();
  const auto due = queue.nextDue();
  if (!due) return timer_.stop();
  const Seconds wait = std::max(*due - steadyNow(), Seconds::zero());
  timer_.start(std::chrono::ceil<std::chrono::milliseconds>(wait));
}

void DeskSession::notePort() {
  const bool isOnCable = machine_->pad.link() == desk::Pad::Link::usb && machine_->port;
  const std::lock_guard lock(mutex_);
  port_ = isOnCable ? std::optional(machine_->port->path()) : std::nullopt;
}

std::shared_ptr<Orlo3Linking> DeskSession::link() {
  const auto discover = [this] {
    const std::lock_guard lock(mutex_);
    return port_;
  };
  return std::make_shared<Orlo3SerialLink>(discover, linkClock_);
}

} // namespace trellivar
