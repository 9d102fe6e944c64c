#pragma once

#include "core/instant.h"

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>

/// The clocks of the system, all of which show the virtual time of the desk.
namespace trellivar::darwin_double {

/// Of mach_absolute_time. A tick is no nanosecond.
std::uint64_t ticksOf(Instant time);
/// When a timer with this fire date is due: as many whole nanoseconds from now as the date tells.
Instant dueAt(CFAbsoluteTime date);

} // namespace trellivar::darwin_double
