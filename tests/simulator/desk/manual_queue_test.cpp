#include "simulator/desk/manual_queue.h"

#include <gtest/gtest.h>

#include <thread>

namespace trellivar::desk {
namespace {

class ManualQueueTest : public testing::Test {
protected:
  MainQueue::Block note(int number) {
    return [this, number] {
      order.push_back(number);
      times.push_back(now());
    };
  }
  double now() { return queue.now().time_since_epoch().count(); }

  ManualQueue queue;
  std::vector<int> order;
  std::vector<double> times;
};

TEST_F(ManualQueueTest, nothingRunsWithinTheCall) {
  queue.async(note(1));
  queue.asyncAfter(Seconds(-1), note(2)).detach();
  EXPECT_TRUE(order.empty());
  queue.run();
  EXPECT_EQ(order, (std::vector{1, 2}));
  EXPECT_EQ(now(), 0);
}

TEST_F(ManualQueueTest, blocksRunInTheOrderOfTheirTimesThenOfTheirArrival) {
  auto third = queue.asyncAfter(Seconds(2), note(3));
  auto first = queue.asyncAfter(Seconds(1), note(1));
  auto fourth = queue.asyncAfter(Seconds(2), note(4));
  auto second = queue.asyncAfter(Seconds(1), note(2));
  queue.advance(Seconds(5));
  EXPECT_EQ(order, (std::vector{1, 2, 3, 4}));
}

TEST_F(ManualQueueTest, everyBlockRunsAtItsOwnTime) {
  queue.asyncAfter(Seconds(1), note(1)).detach();
  queue.asyncAfter(Seconds(2.5), note(2)).detach();
  queue.advance(Seconds(4));
  EXPECT_EQ(times, (std::vector{1.0, 2.5}));
  EXPECT_EQ(now(), 4);
}

TEST_F(ManualQueueTest, timePassesOnlyAsFarAsItIsTold) {
  queue.asyncAfter(Seconds(1), note(1)).detach();
  queue.advance(Seconds(0.999));
  EXPECT_TRUE(order.empty());
  queue.run();
  EXPECT_TRUE(order.empty());
  queue.advance(Seconds(0.001));
  EXPECT_EQ(order.size(), 1U);
}

TEST_F(ManualQueueTest, whatABlockPutsOnTheQueueRunsInTheSameTurn) {
  queue.async([this] {
    order.push_back(1);
    queue.async(note(2));
    queue.asyncAfter(Seconds(1), note(3)).detach();
  });
  queue.run();
  EXPECT_EQ(order, (std::vector{1, 2}));
  queue.advance(Seconds(2));
  EXPECT_EQ(times.back(), 1);
}

TEST_F(ManualQueueTest, aHandleThatEndsTakesItsBlockAlong) {
  {
    const auto gone = queue.asyncAfter(Seconds(1), note(1));
    EXPECT_EQ(queue.pendingCount(), 1U);
  }
  EXPECT_EQ(queue.pendingCount(), 0U);
  EXPECT_EQ(queue.nextDue(), std::nullopt);
  auto cancelled = queue.asyncAfter(Seconds(1), note(2));
  EXPECT_TRUE(cancelled.isPending());
  cancelled.cancel();
  EXPECT_FALSE(cancelled.isPending());
  auto replaced = queue.asyncAfter(Seconds(1), note(3));
  replaced = queue.asyncAfter(Seconds(1), note(4));
  queue.advance(Seconds(2));
  EXPECT_EQ(order, (std::vector{4}));
  EXPECT_FALSE(replaced.isPending());
}

TEST_F(ManualQueueTest, aBlockMayCancelAnotherThatIsDueAtTheSameTime) {
  WorkItem second;
  auto first = queue.asyncAfter(Seconds(1), [&] { second.cancel(); });
  second = queue.asyncAfter(Seconds(1), note(2));
  queue.advance(Seconds(1));
  EXPECT_TRUE(order.empty());
}

TEST_F(ManualQueueTest, tellsWhenTheNextBlockIsDue) {
  auto later = queue.asyncAfter(Seconds(3), note(1));
  auto sooner = queue.asyncAfter(Seconds(2), note(2));
  EXPECT_EQ(queue.nextDue(), Instant(Seconds(2)));
  sooner.cancel();
  EXPECT_EQ(queue.nextDue(), Instant(Seconds(3)));
}

TEST_F(ManualQueueTest, runsOneBlockAtATimeIfThatIsWanted) {
  queue.async(note(1));
  queue.asyncAfter(Seconds(1), note(2)).detach();
  queue.asyncAfter(Seconds(3), note(3)).detach();
  const Instant end(Seconds(2));
  EXPECT_TRUE(queue.runNext(end));
  EXPECT_EQ(order, (std::vector{1}));
  EXPECT_TRUE(queue.runNext(end));
  EXPECT_EQ(now(), 1);
  EXPECT_FALSE(queue.runNext(end));
  EXPECT_EQ(now(), 1); // time stays where it was
}

TEST_F(ManualQueueTest, otherThreadsMayAddBlocks) {
  std::thread other([this] {
    for (int count = 0; count < 100; ++count)
      queue.async(note(count));
  });
  other.join();
  queue.run();
  EXPECT_EQ(order.size(), 100U);
}

/// With a clock that the test sets.
class FollowingQueueTest : public ManualQueueTest {
protected:
  FollowingQueueTest() {
    queue.follow([this] { return Instant(Seconds(clock)); }, [this] { ++added; });
  }

  double clock = 100;
  int added = 0;
};

TEST_F(FollowingQueueTest, theTimeIsThatOfTheClock) {
  EXPECT_EQ(now(), 100);
  clock = 105;
  EXPECT_EQ(now(), 105);
}

TEST_F(FollowingQueueTest, blocksAreDueByTheClock) {
  clock = 110;
  auto work = queue.asyncAfter(Seconds(2), note(1));
  EXPECT_EQ(queue.nextDue(), Instant(Seconds(112))) << "and not since the queue was last run";
  clock = 111.9;
  queue.run();
  EXPECT_TRUE(order.empty());
  clock = 112;
  queue.run();
  EXPECT_EQ(order, std::vector{1});
}

TEST_F(FollowingQueueTest, whoDrivesItIsToldOfEveryBlock) {
  queue.async(note(1));
  auto work = queue.asyncAfter(Seconds(1), [] {});
  EXPECT_EQ(added, 2);
  queue.run();
  EXPECT_EQ(order, std::vector{1});
}

} // namespace
} // namespace trellivar::desk
