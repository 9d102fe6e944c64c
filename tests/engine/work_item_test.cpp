#include "engine/main_queue.h"

#include <gtest/gtest.h>

#include <utility>

namespace trellivar {
namespace {

using Block = WorkItem::Block;

/// As a queue keeps it.
class WorkItemTest : public testing::Test {
protected:
  std::shared_ptr<Block> shared() {
    return std::make_shared<Block>([this] { ++runs_; });
  }
  static void run(const std::shared_ptr<Block>& block) {
    if (const auto taken = std::exchange(*block, nullptr)) taken();
  }

  int runs_ = 0;
};

TEST_F(WorkItemTest, nothingIsPendingInAnEmptyHandle) {
  WorkItem item;
  EXPECT_FALSE(item.isPending());
  item.cancel();
  item.detach();
}

TEST_F(WorkItemTest, isPendingUntilItHasRun) {
  const auto block = shared();
  const WorkItem item(block);
  EXPECT_TRUE(item.isPending());
  run(block);
  EXPECT_FALSE(item.isPending());
  EXPECT_EQ(runs_, 1);
}

TEST_F(WorkItemTest, aCancelledBlockNeverRuns) {
  const auto block = shared();
  WorkItem item(block);
  item.cancel();
  EXPECT_FALSE(item.isPending());
  run(block);
  EXPECT_EQ(runs_, 0);
}

TEST_F(WorkItemTest, aDestroyedHandleCancels) {
  const auto block = shared();
  { const WorkItem item(block); }
  run(block);
  EXPECT_EQ(runs_, 0);
}

TEST_F(WorkItemTest, anAssignedHandleCancelsWhatItHadAndTakesTheOther) {
  const auto first = shared();
  const auto second = shared();
  WorkItem item(first);
  WorkItem other(second);
  item = std::move(other);
  EXPECT_TRUE(item.isPending());
  run(first);
  EXPECT_EQ(runs_, 0);
  run(second);
  EXPECT_EQ(runs_, 1);
}

TEST_F(WorkItemTest, aMovedHandleKeepsTheBlock) {
  const auto block = shared();
  WorkItem to;
  {
    WorkItem from(block);
    to = WorkItem(std::move(from));
  }
  EXPECT_TRUE(to.isPending());
  run(block);
  EXPECT_EQ(runs_, 1);
}

TEST_F(WorkItemTest, aDetachedBlockRunsWithoutItsHandle) {
  const auto block = shared();
  {
    WorkItem item(block);
    item.detach();
    EXPECT_FALSE(item.isPending());
    item.cancel();
  }
  run(block);
  EXPECT_EQ(runs_, 1);
}

TEST_F(WorkItemTest, cancellingFreesWhatTheBlockHolds) {
  const auto held = std::make_shared<int>();
  const auto block = std::make_shared<Block>([held] {});
  WorkItem item(block);
  EXPECT_EQ(held.use_count(), 2);
  item.cancel();
  EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace trellivar
