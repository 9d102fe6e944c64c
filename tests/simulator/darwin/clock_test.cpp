#include "tests/simulator/darwin/fixture.h"

#include <dispatch/dispatch.h>
#include <mach/mach_time.h>

namespace trellivar::darwin_double {
namespace {

/// A timer of the program, and how often it has fired.
class Alarm {
public:
  CFRunLoopTimerRef create(double delay, double interval = 0) {
    CFRunLoopTimerContext context{};
    context.info = this;
    return CFRunLoopTimerCreate(
        nullptr, CFAbsoluteTimeGetCurrent() + delay, interval, 0, 0,
        [](CFRunLoopTimerRef timer, void* info) { static_cast<Alarm*>(info)->fire(timer); },
        &context);
  }
  void fire(CFRunLoopTimerRef timer) {
    ++fired;
    if (action) action(timer);
  }

  int fired = 0;
  std::function<void(CFRunLoopTimerRef)> action;
};

class RunLoopTest : public DarwinTest {
protected:
  CFRunLoopRef loop = CFRunLoopGetMain();
  Alarm alarm;
};
using RunLoopDeathTest = RunLoopTest;

TEST_F(RunLoopTest, allClocksShowTheDesksTime) {
  mach_timebase_info_data_t base{};
  ASSERT_EQ(mach_timebase_info(&base), 0);
  EXPECT_NE(base.numer, base.denom); // ticks are no nanoseconds
  const std::uint64_t ticks = mach_absolute_time();
  const CFAbsoluteTime date = CFAbsoluteTimeGetCurrent();
  pass(1.5);
  EXPECT_EQ((mach_absolute_time() - ticks) * base.numer / base.denom, 1'500'000'000U);
  EXPECT_NEAR(CFAbsoluteTimeGetCurrent() - date, 1.5, 1e-9);
}

TEST_F(RunLoopTest, aTimerFiresOnceAtItsTime) {
  CFRunLoopTimerRef timer = alarm.create(0.04);
  EXPECT_EQ(platform.scheduledTimers(), 0U);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
  CFRelease(timer);
  EXPECT_EQ(platform.scheduledTimers(), 1U);
  pass(0.039);
  EXPECT_EQ(alarm.fired, 0);
  pass(0.001);
  EXPECT_EQ(alarm.fired, 1);
  EXPECT_EQ(platform.scheduledTimers(), 0U);
  pass(10);
  EXPECT_EQ(alarm.fired, 1);
}

TEST_F(RunLoopTest, aTimersTimeIsExactWheneverItIsMade) {
  for (const double start : {0.1, 0.2, 0.7, 12.3456789, 1000.1}) {
    pass(start);
    CFRunLoopTimerRef timer = alarm.create(0.04);
    CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
    CFRelease(timer);
    const int before = alarm.fired;
    pass(0.04);
    EXPECT_EQ(alarm.fired, before + 1) << start;
  }
}

TEST_F(RunLoopTest, aTimerThatWasNotAddedNeverFires) {
  CFRunLoopTimerRef timer = alarm.create(0.04);
  pass(1);
  EXPECT_EQ(alarm.fired, 0);
  CFRelease(timer);
}

TEST_F(RunLoopTest, anInvalidTimerNeverFires) {
  CFRunLoopTimerRef timer = alarm.create(0.04);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
  CFRunLoopTimerInvalidate(timer);
  EXPECT_EQ(platform.scheduledTimers(), 0U);
  CFRunLoopTimerInvalidate(timer);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
  pass(1);
  EXPECT_EQ(alarm.fired, 0);
  CFRelease(timer);
}

TEST_F(RunLoopTest, aTimerMayBeInvalidatedAndReleasedWithinItsCallback) {
  alarm.action = [](CFRunLoopTimerRef timer) {
    CFRunLoopTimerInvalidate(timer);
    CFRelease(timer);
  };
  CFRunLoopAddTimer(loop, alarm.create(0.04), kCFRunLoopCommonModes);
  pass(1);
  EXPECT_EQ(alarm.fired, 1);
}

TEST_F(RunLoopTest, aRepeatingTimerFiresUntilItIsInvalidated) {
  CFRunLoopTimerRef timer = alarm.create(1, 1);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
  pass(3.5);
  EXPECT_EQ(alarm.fired, 3);
  CFRunLoopTimerInvalidate(timer);
  pass(3);
  EXPECT_EQ(alarm.fired, 3);
  CFRelease(timer);
}

TEST_F(RunLoopTest, whileAMenuIsOpenOnlyTheCommonModesRun) {
  Alarm common;
  CFRunLoopTimerRef inDefault = alarm.create(0.1);
  CFRunLoopTimerRef inCommon = common.create(0.1);
  CFRunLoopAddTimer(loop, inDefault, kCFRunLoopDefaultMode);
  CFRunLoopAddTimer(loop, inCommon, kCFRunLoopCommonModes);
  CFRelease(inDefault);
  CFRelease(inCommon);
  desk.setTracking(true);
  pass(1);
  EXPECT_EQ(alarm.fired, 0);
  EXPECT_EQ(common.fired, 1);
  desk.setTracking(false);
  run();
  EXPECT_EQ(alarm.fired, 1);
}

TEST_F(RunLoopTest, theInfoOfATimerIsRetainedAndReleased) {
  static int count;
  count = 0;
  CFRunLoopTimerContext context{};
  context.info = &count;
  context.retain = [](const void* info) {
    ++count;
    return info;
  };
  context.release = [](const void*) { --count; };
  CFRunLoopTimerRef timer = CFRunLoopTimerCreate(
      nullptr, CFAbsoluteTimeGetCurrent(), 0, 0, 0, [](CFRunLoopTimerRef, void*) {}, &context);
  EXPECT_EQ(count, 1);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopCommonModes);
  CFRelease(timer);
  EXPECT_EQ(count, 1);
  run();
  EXPECT_EQ(count, 0);
}

TEST_F(RunLoopTest, aTimerThatIsLeftOverIsCounted) {
  CFRunLoopTimerRef timer = alarm.create(10);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopDefaultMode);
  EXPECT_EQ(platform.liveReferences().size(), 1U);
  CFRelease(timer); // which does not take it out of the run loop
  EXPECT_TRUE(platform.liveReferences().empty());
  EXPECT_EQ(platform.scheduledTimers(), 1U);
  pass(10);
}

TEST_F(RunLoopTest, runningTheLoopLetsTimePass) {
  CFRunLoopTimerRef timer = alarm.create(0.5);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopDefaultMode);
  CFRelease(timer);
  const CFAbsoluteTime start = CFAbsoluteTimeGetCurrent();
  EXPECT_EQ(CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.25, 0), kCFRunLoopRunTimedOut);
  EXPECT_NEAR(CFAbsoluteTimeGetCurrent() - start, 0.25, 1e-9);
  EXPECT_EQ(alarm.fired, 0);
  EXPECT_EQ(CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.25, 0), kCFRunLoopRunTimedOut);
  EXPECT_EQ(alarm.fired, 1);
}

TEST_F(RunLoopTest, stoppingTheLoopEndsItAtThatTime) {
  alarm.action = [&](CFRunLoopTimerRef) { CFRunLoopStop(loop); };
  CFRunLoopTimerRef timer = alarm.create(0.5);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopDefaultMode);
  CFRelease(timer);
  const CFAbsoluteTime start = CFAbsoluteTimeGetCurrent();
  EXPECT_EQ(CFRunLoopRunInMode(kCFRunLoopDefaultMode, 60, 0), kCFRunLoopRunStopped);
  EXPECT_NEAR(CFAbsoluteTimeGetCurrent() - start, 0.5, 1e-9);
}

TEST_F(RunLoopDeathTest, theLoopDoesNotRunWithinItself) {
  alarm.action = [](CFRunLoopTimerRef) { CFRunLoopRunInMode(kCFRunLoopDefaultMode, 1, 0); };
  CFRunLoopTimerRef timer = alarm.create(0.5);
  CFRunLoopAddTimer(loop, timer, kCFRunLoopDefaultMode);
  EXPECT_DEATH(pass(1), "CFRunLoopRunInMode: the run loop runs already");
  CFRunLoopTimerInvalidate(timer);
  CFRelease(timer);
}

TEST_F(RunLoopDeathTest, theMainLoopIsBorrowed) {
  EXPECT_EQ(CFRunLoopGetCurrent(), loop);
  EXPECT_DEATH(CFRelease(loop), "CFRunLoop #[0-9]+ is released once too often");
}

TEST_F(RunLoopDeathTest, loopsAndModesAreThoseThatExist) {
  CFRunLoopTimerRef timer = alarm.create(1);
  EXPECT_DEATH(CFRunLoopAddTimer(loop, timer, CFSTR("SomeMode")), "SomeMode");
  EXPECT_DEATH(CFRunLoopAddTimer(nullptr, timer, kCFRunLoopDefaultMode), "NULL is no CFRunLoop");
  CFRelease(timer);
}

using Order = std::vector<int>;

void note(void* order) {
  auto& list = *static_cast<Order*>(order);
  list.push_back(static_cast<int>(list.size()) + 1);
}

TEST_F(RunLoopTest, theMainQueueRunsWorkLater) {
  Order order;
  dispatch_async_f(dispatch_get_main_queue(), &order, note);
  EXPECT_TRUE(order.empty());
  run();
  EXPECT_EQ(order, (Order{1}));
}

TEST_F(RunLoopTest, theMainQueueRunsInTheCommonModes) {
  Order order;
  desk.setTracking(true);
  dispatch_async_f(dispatch_get_main_queue(), &order, note);
  run();
  EXPECT_EQ(order, (Order{1}));
}

TEST_F(RunLoopTest, delayedWorkRunsAfterItsDelay) {
  for (const double start : {0.0, 0.1, 12.3456789}) {
    pass(start);
    Order order;
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, 150 * NSEC_PER_MSEC),
                     dispatch_get_main_queue(), &order, note);
    pass(0.149);
    EXPECT_TRUE(order.empty());
    pass(0.0010001);
    EXPECT_EQ(order, (Order{1})) << start;
  }
}

TEST_F(RunLoopDeathTest, onlyTheMainQueueIsKnown) {
  EXPECT_DEATH(dispatch_async_f(nullptr, nullptr, note), "only the main queue");
}

} // namespace
} // namespace trellivar::darwin_double
