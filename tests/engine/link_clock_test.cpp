#include "engine/link_clock.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <csignal>

/// The one test that really sleeps: it is about nothing else.
namespace trellivar {
namespace {

volatile std::sig_atomic_t rings = 0;
void countRing(int) { rings = rings + 1; }

/// A signal every ten milliseconds.
class SystemLinkClockTest : public testing::Test {
protected:
  SystemLinkClockTest() {
    rings = 0;
    struct sigaction counting {};
    counting.sa_handler = countRing;
    ::sigaction(SIGALRM, &counting, &before_);
    const itimerval often{{0, 10'000}, {0, 10'000}};
    ::setitimer(ITIMER_REAL, &often, nullptr);
  }
  ~SystemLinkClockTest() override {
    const itimerval never{};
    ::setitimer(ITIMER_REAL, &never, nullptr);
    ::sigaction(SIGALRM, &before_, nullptr);
  }

private:
  struct sigaction before_ {};
};

TEST_F(SystemLinkClockTest, sleepsTheWholeTimeWhateverSignalsCome) {
  SystemLinkClock clock;
  const Instant begin = clock.now();
  clock.sleep(Seconds(0.1));
  EXPECT_GE((clock.now() - begin).count(), 0.1);
  EXPECT_GE(rings, 1);
}

class WakefulClock : public SystemLinkClock {
  bool sleepsOn() const override { return rings < 3; }
};

TEST_F(SystemLinkClockTest, asksAfterEverySignalWhetherToSleepOn) {
  WakefulClock clock;
  const Instant begin = clock.now();
  clock.sleep(Seconds(600));
  EXPECT_LT((clock.now() - begin).count(), 60);
  EXPECT_GE(rings, 3);
}

} // namespace
} // namespace trellivar
