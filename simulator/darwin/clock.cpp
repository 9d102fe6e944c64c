#include "simulator/darwin/clock.h"

#include "simulator/darwin/machine.h"

#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>
#include <mach/mach_time.h>

#include <algorithm>
#include <cmath>

namespace trellivar::darwin_double {

namespace {

/// Nanoseconds of a tick: numerator and denominator.
constexpr std::uint32_t numerator = 125;
constexpr std::uint32_t denominator = 3;

/// The wall clock at the origin of virtual time. Small, so that a date tells nanoseconds.
constexpr CFAbsoluteTime startDate = 1'000'000;

constexpr double nanosecondsPerSecond = 1e9;

std::int64_t nanoseconds(Instant time) {
  return std::llround(time.time_since_epoch().count() * nanosecondsPerSecond);
}

desk::ManualQueue& queue(const char* call) { return machine(call).desk.queue(); }

} // namespace

std::uint64_t ticksOf(Instant time) {
  return static_cast<std::uint64_t>(nanoseconds(time)) * denominator / numerator;
}

Instant dueAt(CFAbsoluteTime date) {
  const Instant now = queue("CFRunLoopTimerCreate").now();
  const double delay = date - startDate - now.time_since_epoch().count();
  return now + Seconds(std::round(delay * nanosecondsPerSecond) / nanosecondsPerSecond);
}

} // namespace trellivar::darwin_double

using namespace trellivar::darwin_double; // NOLINT(google-build-using-namespace): C functions
                                          // follow

/// The main queue: what it is told apart by is its address.
struct dispatch_queue_s {};

namespace {

dispatch_queue_s mainQueue;

void requireMainQueue(dispatch_queue_t queue, const char* call) {
  if (queue != &mainQueue) fail(call, "only the main queue is known here");
}

} // namespace

extern "C" {

CFAbsoluteTime CFAbsoluteTimeGetCurrent() {
  return startDate + queue("CFAbsoluteTimeGetCurrent").now().time_since_epoch().count();
}

std::uint64_t mach_absolute_time() { return ticksOf(queue("mach_absolute_time").now()); }

kern_return_t mach_timebase_info(mach_timebase_info_t info) {
  *info = {numerator, denominator};
  return 0;
}

dispatch_queue_t dispatch_get_main_queue() { return &mainQueue; }

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
  requireMainQueue(queue, "dispatch_async_f");
  ::queue("dispatch_async_f").async([context, work] {
    const CallbackScope scope(machine("dispatch_async_f"));
    work(context);
  });
}

/// In nanoseconds of virtual time.
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds) {
  const std::int64_t base = when == DISPATCH_TIME_NOW ? ::nanoseconds(queue("dispatch_time").now())
                                                      : static_cast<std::int64_t>(when);
  return static_cast<dispatch_time_t>(std::max<std::int64_t>(base + nanoseconds, 1));
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context,
                      dispatch_function_t work) {
  requireMainQueue(queue, "dispatch_after_f");
  auto& target = ::queue("dispatch_after_f");
  const std::int64_t delay =
      when == DISPATCH_TIME_NOW ? 0 : static_cast<std::int64_t>(when) - ::nanoseconds(target.now());
  const trellivar::Seconds seconds(static_cast<double>(delay) / nanosecondsPerSecond);
  target
      .asyncAfter(seconds,
                  [context, work] {
                    const CallbackScope scope(machine("dispatch_after_f"));
                    work(context);
                  })
      .detach();
}

} // extern "C"
