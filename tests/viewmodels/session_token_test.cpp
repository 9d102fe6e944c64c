#include "viewmodels/session_token.h"

#include <gtest/gtest.h>

#include <csignal>
#include <limits>

namespace trellivar {
namespace {

constexpr SessionToken::Value last = std::numeric_limits<SessionToken::Value>::max();

TEST(SessionToken, startsAtZero) {
  EXPECT_EQ(SessionToken().value(), 0);
  EXPECT_TRUE(SessionToken().isCurrent(0));
}

TEST(SessionToken, countsUpByOne) {
  SessionToken token;
  token.advance();
  EXPECT_EQ(token.value(), 1);
  token.advance();
  EXPECT_EQ(token.value(), 2);
}

TEST(SessionToken, makesEverythingStaleThatWasStartedBefore) {
  SessionToken token;
  const auto first = token.value();
  token.advance();
  const auto second = token.value();
  EXPECT_FALSE(token.isCurrent(first));
  EXPECT_TRUE(token.isCurrent(second));
  token.advance();
  EXPECT_FALSE(token.isCurrent(first));
  EXPECT_FALSE(token.isCurrent(second));
}

TEST(SessionToken, isCurrentForItsOwnValueAlone) {
  const SessionToken token(5);
  EXPECT_TRUE(token.isCurrent(5));
  EXPECT_FALSE(token.isCurrent(4));
  EXPECT_FALSE(token.isCurrent(6));
  EXPECT_FALSE(token.isCurrent(-5));
}

TEST(SessionToken, has64Bits) {
  static_assert(sizeof(SessionToken::Value) == 8 &&
                std::numeric_limits<SessionToken::Value>::is_signed);
  SessionToken token(std::numeric_limits<std::int32_t>::max());
  token.advance();
  EXPECT_EQ(token.value(), 2'147'483'648);
}

TEST(SessionToken, reachesItsLastValue) {
  SessionToken token(last - 1);
  token.advance();
  EXPECT_EQ(token.value(), last);
}

TEST(SessionTokenDeathTest, abortsRatherThanBeginAgain) {
  SessionToken token(last);
  EXPECT_EXIT(token.advance(), testing::KilledBySignal(SIGABRT), "");
}

} // namespace
} // namespace trellivar
