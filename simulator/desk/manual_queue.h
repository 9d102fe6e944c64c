#pragma once

#include "engine/main_queue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <queue>
#include <vector>

namespace trellivar::desk {

/// A main queue on virtual time, which passes only when it is told to. `async` may be called on any
/// thread; all else belongs to the thread that drives the queue.
class ManualQueue final : public MainQueue {
public:
  Instant now() const override { return now_; }
  void async(Block block) override;
  WorkItem asyncAfter(Seconds delay, Block block) override;

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

  mutable std::mutex mutex_; ///< of what follows
  Instant now_{}; ///< changes only on the driving thread, which may read it without the mutex
  std::uint64_t count_ = 0;
  Entries entries_;
};

} // namespace trellivar::desk
