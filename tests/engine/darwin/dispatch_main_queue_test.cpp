#include "engine/darwin/dispatch_main_queue.h"
#include "tests/engine/darwin/computer.h"

#include <optional>
#include <string>
#include <thread>

namespace trellivar {

namespace {

class DispatchMainQueueTest : public testing::Test {
protected:
  /// A block that notes its name.
  MainQueue::Block note(const std::string& name) {
    return [this, name] { ran_ += name; };
  }
  /// What has run since the last call.
  std::string ran() { return std::exchange(ran_, ""); }
  void pass(double seconds) { computer.pass(seconds); }

  Computer computer;
  DispatchMainQueue queue;

private:
  std::string ran_;
};

TEST_F(DispatchMainQueueTest, itsTimeIsTheMachines) {
  const Instant start = queue.now();
  EXPECT_EQ(queue.now(), start);
  pass(1.5);
  EXPECT_NEAR((queue.now() - start).count(), 1.5, 1e-6);
  pass(3600);
  EXPECT_NEAR((queue.now() - start).count(), 3601.5, 1e-6);
}

TEST_F(DispatchMainQueueTest, runsNothingWithinTheCallAndKeepsTheOrder) {
  pass(1);
  queue.async(note("a"));
  queue.async(note("b"));
  queue.asyncAfter(Seconds(0), note("c")).detach();
  queue.asyncAfter(Seconds(-1), note("d")).detach();
  queue.async(note("e"));
  EXPECT_EQ(ran(), "");
  pass(0);
  EXPECT_EQ(ran(), "abcde");
}

TEST_F(DispatchMainQueueTest, aBlockMayPutAnotherOnTheQueue) {
  queue.async([this] {
    queue.async(note("later"));
    note("first")();
  });
  queue.async(note("second"));
  pass(0);
  EXPECT_EQ(ran(), "firstsecondlater");
}

TEST_F(DispatchMainQueueTest, laterBlocksWaitForTheirTime) {
  const WorkItem late = queue.asyncAfter(Seconds(1), note("late"));
  const WorkItem soon = queue.asyncAfter(Seconds(0.25), note("soon"));
  pass(0.2);
  EXPECT_EQ(ran(), "");
  pass(0.06);
  EXPECT_EQ(ran(), "soon");
  EXPECT_FALSE(soon.isPending());
  EXPECT_TRUE(late.isPending());
  pass(0.7);
  EXPECT_EQ(ran(), "");
  pass(0.1);
  EXPECT_EQ(ran(), "late");
  EXPECT_FALSE(late.isPending());
}

TEST_F(DispatchMainQueueTest, blocksRunOnce) {
  const WorkItem item = queue.asyncAfter(Seconds(1), note("a"));
  pass(10);
  EXPECT_EQ(ran(), "a");
}

TEST_F(DispatchMainQueueTest, whatIsCancelledNeverRuns) {
  WorkItem cancelled = queue.asyncAfter(Seconds(1), note("cancelled"));
  { const WorkItem destroyed = queue.asyncAfter(Seconds(1), note("destroyed")); }
  WorkItem replaced = queue.asyncAfter(Seconds(1), note("replaced"));
  pass(0.5);
  cancelled.cancel();
  replaced = queue.asyncAfter(Seconds(1), note("replacing"));
  pass(10);
  EXPECT_EQ(ran(), "replacing");
}

TEST_F(DispatchMainQueueTest, whatIsDetachedRunsWithoutItsHandle) {
  queue.asyncAfter(Seconds(1), note("a")).detach();
  pass(2);
  EXPECT_EQ(ran(), "a");
}

TEST_F(DispatchMainQueueTest, aBlockMayDestroyItsOwnHandle) {
  std::optional<WorkItem> item;
  item = queue.asyncAfter(Seconds(1), [&] {
    item.reset();
    note("a")();
  });
  pass(2);
  EXPECT_EQ(ran(), "a");
}

TEST_F(DispatchMainQueueTest, whatABlockHoldsIsFreedOnceItRanOrWasCancelled) {
  const auto held = std::make_shared<int>();
  queue.async([held] {});
  WorkItem waiting = queue.asyncAfter(Seconds(1), [held] {});
  WorkItem cancelled = queue.asyncAfter(Seconds(1), [held] {});
  EXPECT_EQ(held.use_count(), 4);
  cancelled.cancel();
  EXPECT_EQ(held.use_count(), 3) << "at once, not when it would have run";
  pass(0);
  EXPECT_EQ(held.use_count(), 2);
  pass(2);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(DispatchMainQueueTest, otherThreadsMayPutBlocksOnIt) {
  std::thread([this] { queue.async(note("a")); }).join();
  EXPECT_EQ(ran(), "");
  pass(0);
  EXPECT_EQ(ran(), "a");
}

TEST_F(DispatchMainQueueTest, theMainLoopRunsItForAsLongAsItIsTold) {
  const WorkItem within = queue.asyncAfter(Seconds(0.1), note("within"));
  const WorkItem after = queue.asyncAfter(Seconds(0.5), note("after"));
  const Instant start = queue.now();
  darwin::runMainLoop(Seconds(0.25));
  EXPECT_EQ(ran(), "within");
  EXPECT_NEAR((queue.now() - start).count(), 0.25, 1e-6);
  darwin::runMainLoop(Seconds(0.3));
  EXPECT_EQ(ran(), "after");
}

} // namespace

} // namespace trellivar
