#pragma once

#include "engine/main_queue.h"

#include <functional>
#include <thread>
#include <utility>
#include <vector>

namespace trellivar {

/// Work that waits until it is told to begin.
class HeldBackground final : public BackgroundQueue {
public:
  void async(std::function<void()> block) override { blocks_.push_back(std::move(block)); }
  bool isEmpty() const { return blocks_.empty(); }

  /// On a thread of its own, until which ends the desk has to rest.
  std::jthread begin() {
    return std::jthread([blocks = std::exchange(blocks_, {})] {
      for (const auto& block : blocks)
        block();
    });
  }
  void run() { begin().join(); }
  /// On this thread.
  void runNext() {
    const auto block = std::move(blocks_.front());
    blocks_.erase(blocks_.begin());
    block();
  }

private:
  std::vector<std::function<void()>> blocks_;
};

} // namespace trellivar
