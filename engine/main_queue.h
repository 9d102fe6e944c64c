#pragma once

#include "core/instant.h"

#include <functional>
#include <memory>
#include <utility>

namespace trellivar {

/// Something to be run later. The handle owns it: when the handle is destroyed, cancelled or
/// assigned, what has not run yet never will, so that a block held by its owner may refer to it.
class [[nodiscard]] WorkItem {
public:
  using Block = std::function<void()>;

  WorkItem() noexcept = default;
  /// For queues: they keep a `shared` of their own, take the block out of it at its time, and run
  /// it if it is still there.
  explicit WorkItem(std::shared_ptr<Block> shared) noexcept : block_(std::move(shared)) {}
  WorkItem(WorkItem&&) noexcept = default;
  WorkItem& operator=(WorkItem&& other) noexcept {
    cancel();
    block_ = std::move(other.block_);
    return *this;
  }
  WorkItem(const WorkItem&) = delete;
  WorkItem& operator=(const WorkItem&) = delete;
  ~WorkItem() { cancel(); }

  void cancel() noexcept {
    if (const auto block = std::exchange(block_, nullptr)) *block = nullptr;
  }
  /// Neither run nor cancelled yet.
  bool isPending() const noexcept { return block_ && *block_; }
  /// Lets the block run even after this handle is gone.
  void detach() noexcept { block_ = nullptr; }

private:
  std::shared_ptr<Block> block_;
};

/// The queue of the main thread, and its time. What is put on it runs on the main thread, one block
/// after another; blocks that are due at the same time run in the order in which they came.
class MainQueue {
public:
  using Block = WorkItem::Block;

  virtual ~MainQueue() = default;

  /// Monotonic; the origin is the queue's own. Main thread.
  virtual Instant now() const = 0;
  /// Never runs `block` within this call. Any thread.
  virtual void async(Block block) = 0;
  /// Main thread; so are the handle's operations. A negative delay counts as none.
  virtual WorkItem asyncAfter(Seconds delay, Block block) = 0;

protected:
  MainQueue() = default;
  MainQueue(const MainQueue&) = default;
  MainQueue& operator=(const MainQueue&) = default;
};

/// On which time stands still and nothing is ever run: for what needs a queue and never uses it.
class StubMainQueue final : public MainQueue {
public:
  Instant now() const override { return {}; }
  void async(Block /*block*/) override {}
  WorkItem asyncAfter(Seconds /*delay*/, Block /*block*/) override { return {}; }
};

/// Where work that blocks is done, off the main thread.
class BackgroundQueue {
public:
  virtual ~BackgroundQueue() = default;
  virtual void async(std::function<void()> block) = 0;

protected:
  BackgroundQueue() = default;
  BackgroundQueue(const BackgroundQueue&) = default;
  BackgroundQueue& operator=(const BackgroundQueue&) = default;
};

} // namespace trellivar
