#pragma once

#include "engine/link_clock.h"

#include <csignal>

namespace trellivar::cli {

/// Thrown where the user has pressed Ctrl-C.
struct Interrupted {};

/// The system's clock, which throws `Interrupted` out of `sleep` once SIGINT has arrived, so that
/// whoever waits can clean up. While it lives, SIGINT does nothing else; the handler that was there
/// before is put back in the end. A process that ignores SIGINT goes on ignoring it. One at a time.
class InterruptibleClock : public SystemLinkClock {
public:
  InterruptibleClock();
  InterruptibleClock(const InterruptibleClock&) = delete;
  InterruptibleClock& operator=(const InterruptibleClock&) = delete;
  ~InterruptibleClock() override;

  void sleep(Seconds duration) override;

private:
  bool sleepsOn() const override;

  struct sigaction before_ {};
};

} // namespace trellivar::cli
