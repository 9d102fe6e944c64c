#pragma once

#include <chrono>

namespace trellivar {

using Seconds = std::chrono::duration<double>;

/// The monotonic time line of the engine. It has no `now`: whoever calls the core passes the time
/// in.
struct EngineClock {
  using rep = double;
  using period = std::ratio<1>;
  using duration = Seconds;
  using time_point = std::chrono::time_point<EngineClock>;
  static constexpr bool is_steady = true;
};

/// Seconds since an origin that the caller chooses and keeps.
using Instant = EngineClock::time_point;

} // namespace trellivar
