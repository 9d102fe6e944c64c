#pragma once

#include "engine/main_queue.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <queue>
#include <vector>

namespace trellivar::desk {

/// A main queue on virtual time, which passes only when it is told to, unless it follows a clock.
/// `async` may be called on any thread; all else belongs to the thread that drives the queue.
class ManualQueue final : public MainQueue {
public:
  Instant now() const override { return clock_ ? clock_() : now_; }
  void async(Block block) override;
  WorkItem asyncAfter(Seconds delay, Block block) override;

  /// Lets time pass as `clock` says, which may be asked on any thread. `added` is called, on any
  /// thread too, after a block was added: whoever drives the queue then sees to it that `run` is
  /// called at `nextDue`. Before anything is on the queue.
  void follow(std::function<Instant()> clock, std::function<void()> added);

  /// Runs what is due now, what that puts on the queue included.
  void run();
  /// Lets this much time pass; every block runs at its own time.
  void advance(Seconds duration);
  /// Runs the next block that is due by `end`, at its time; answers whether there was one.
  bool runNext(Instant end);

  /// When the next block that is still wanted is due.
  std::optional<Instant> nextDue();
  /// Blocks that are still wanted.
  std::size_t pendingCount() const;

private:
  struct Entry {
    Instant due;
    std::uint64_t number; ///< in order of arrival
    std::shared_ptr<Block> block;
  };
  struct Later {
    bool operator()(const Entry& a, const Entry& b) const {
      return a.due != b.due ? a.due > b.due : a.number > b.number;
    }
  };
  class Entries : public std::priority_queue<Entry, std::vector<Entry>, Later> {
  public:
    const std::vector<Entry>& all() const { return c; }
  };

  std::shared_ptr<Block> add(Seconds delay, Block block);
  void runUntil(Instant end);

  std::function<Instant()> clock_; ///< none: virtual time
  std::function<void()> added_;
  mutable std::mutex mutex_; ///< of what follows
  Instant now_{}; ///< changes only on the driving thread, which may read it without the mutex
  std::uint64_t count_ = 0;
  Entries entries_;
};

} // namespace trellivar::desk
