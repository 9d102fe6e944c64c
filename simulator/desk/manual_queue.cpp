#include "simulator/desk/manual_queue.h"

#include <algorithm>
#include <utility>

namespace trellivar::desk {

std::shared_ptr<ManualQueue::Block> ManualQueue::add(Seconds delay, Block block) {
  auto shared = std::make_shared<Block>(std::move(block));
  {
    const std::lock_guard lock(mutex_);
    entries_.push({(clock_ ? clock_() : now_) + delay, count_++, shared});
  }
  if (added_) added_();
  return shared;
}

void ManualQueue::follow(std::function<Instant()> clock, std::function<void()> added) {
  clock_ = std::move(clock);
  added_ = std::move(added);
}

void ManualQueue::async(Block block) { add(Seconds::zero(), std::move(block)); }

WorkItem ManualQueue::asyncAfter(Seconds delay, Block block) {
  return WorkItem(add(std::max(delay, Seconds::zero()), std::move(block)));
}

std::optional<Instant> ManualQueue::nextDue() {
  const std::lock_guard lock(mutex_);
  while (!entries_.empty() && !*entries_.top().block)
    entries_.pop();
  if (entries_.empty()) return std::nullopt;
  return entries_.top().due;
}

std::size_t ManualQueue::pendingCount() const {
  const std::lock_guard lock(mutex_);
  return static_cast<std::size_t>(std::ranges::count_if(
      entries_.all(), [](const Entry& entry) { return *entry.block != nullptr; }));
}

void ManualQueue::run() { runUntil(now()); }

void ManualQueue::advance(Seconds duration) { runUntil(now() + duration); }

bool ManualQueue::runNext(Instant end) {
  const auto due = nextDue();
  if (!due || *due > end) return false;
  Block block;
  {
    const std::lock_guard lock(mutex_);
    now_ = std::max(now_, *due);
    block = std::exchange(*entries_.top().block, nullptr);
    entries_.pop();
  }
  block();
  return true;
}

void ManualQueue::runUntil(Instant end) {
  while (runNext(end)) {
  }
  const std::lock_guard lock(mutex_);
  now_ = std::max(now_, end);
}

} // namespace trellivar::desk
