#pragma once

#include "engine/main_queue.h"

#include <QObject>
#include <QThreadPool>

namespace trellivar {

/// The loop of the application as the queue of the main thread.
class QtMainQueue final : public MainQueue {
public:
  Instant now() const override;
  void async(Block block) override;
  WorkItem asyncAfter(Seconds delay, Block block) override;

private:
  QObject context_; ///< what is still on the loop ends with it
};

/// Threads of their own. Its end waits for what is being done.
class QtBackgroundQueue final : public BackgroundQueue {
public:
  ~QtBackgroundQueue() override { threads_.waitForDone(); }
  QtBackgroundQueue() = default;
  QtBackgroundQueue(const QtBackgroundQueue&) = delete;
  QtBackgroundQueue& operator=(const QtBackgroundQueue&) = delete;

  void async(std::function<void()> block) override { threads_.start(std::move(block)); }

private:
  QThreadPool threads_;
};

} // namespace trellivar
