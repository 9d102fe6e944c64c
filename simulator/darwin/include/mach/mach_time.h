#pragma once

// The monotonic clock. Our own declarations of the system's interface, for machines without it.

#include <cstdint>

using kern_return_t = int;

struct mach_timebase_info_data_t {
  std::uint32_t numer;
  std::uint32_t denom;
};
using mach_timebase_info_t = mach_timebase_info_data_t*;

extern "C" {

/// In ticks; one tick is `numer / denom` nanoseconds.
std::uint64_t mach_absolute_time();
kern_return_t mach_timebase_info(mach_timebase_info_t info);

} // extern "C"
