#include "engine/darwin/dispatch_main_queue.h"

#include <CoreFoundation/CoreFoundation.h>
#include <dispatch/dispatch.h>
#include <mach/mach_time.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace trellivar {

namespace {

using Shared = std::shared_ptr<MainQueue::Block>;

/// `context` is a Shared on the heap, which ends here.
void runBlock(void* context) noexcept {
  const std::unique_ptr<Shared> shared(static_cast<Shared*>(context));
  if (const auto block = std::exchange(**shared, nullptr)) block();
}

Shared* onHeap(Shared shared) { return std::make_unique<Shared>(std::move(shared)).release(); }

} // namespace

Instant DispatchMainQueue::now() const {
  static const auto timebase = [] {
    mach_timebase_info_data_t info{};
    mach_timebase_info(&info);
    return info;
  }();
  const double nanoseconds =
      static_cast<double>(mach_absolute_time()) * timebase.numer / timebase.denom;
  return Instant(Seconds(nanoseconds / 1e9));
}

void DispatchMainQueue::async(Block block) {
  dispatch_async_f(dispatch_get_main_queue(), onHeap(std::make_shared<Block>(std::move(block))),
                   runBlock);
}

WorkItem DispatchMainQueue::asyncAfter(Seconds delay, Block block) {
  auto shared = std::make_shared<Block>(std::move(block));
  const auto nanoseconds =
      static_cast<std::int64_t>(std::max(delay, Seconds::zero()).count() * NSEC_PER_SEC);
  dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(),
                   onHeap(shared), runBlock);
  return WorkItem(std::move(shared));
}

namespace darwin {

void runMainLoop(Seconds duration) {
  CFRunLoopRunInMode(kCFRunLoopDefaultMode, duration.count(), false);
}

} // namespace darwin

} // namespace trellivar
