#include "cli/interruption.h"

namespace trellivar::cli {

namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void noteInterruption(int) { isInterrupted = 1; }

} // namespace

InterruptibleClock::InterruptibleClock() {
  isInterrupted = 0;
  ::sigaction(SIGINT, nullptr, &before_);
  if (before_.sa_handler == SIG_IGN) return;
  // Without SA_RESTART, so that the signal interrupts a sleep.
  struct sigaction noting {};
  noting.sa_handler = noteInterruption;
  sigemptyset(&noting.sa_mask); // a macro on macOS
  ::sigaction(SIGINT, &noting, nullptr);
}

InterruptibleClock::~InterruptibleClock() { ::sigaction(SIGINT, &before_, nullptr); }

void InterruptibleClock::sleep(Seconds duration) {
  if (isInterrupted == 0) SystemLinkClock::sleep(duration);
  if (isInterrupted != 0) throw Interrupted();
}

bool InterruptibleClock::sleepsOn() const { return isInterrupted == 0; }

} // namespace trellivar::cli
