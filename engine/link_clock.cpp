#include "engine/link_clock.h"

#include <chrono>
#include <ctime> // nanosleep, which a signal ends

namespace trellivar {

Instant SystemLinkClock::now() {
  return Instant(std::chrono::steady_clock::now().time_since_epoch());
}

void SystemLinkClock::sleep(Seconds duration) {
  using std::chrono::nanoseconds;
  const auto whole = std::chrono::floor<std::chrono::seconds>(duration);
  const auto rest = std::chrono::duration_cast<nanoseconds>(duration - whole);
  timespec time{};
  time.tv_sec = whole.count();
  time.tv_nsec = rest.count();
  ::nanosleep(&time, nullptr);
}

} // namespace trellivar
