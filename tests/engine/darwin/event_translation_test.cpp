#include "engine/darwin/event_translation.h"
#include "tests/engine/darwin/computer.h"

namespace trellivar {

namespace {

constexpr std::uint64_t leftCommand = 0x100008;
constexpr std::uint64_t rightCommand = 0x100010;
constexpr std::uint64_t leftShift = 0x20002;

class RewriteTest : public testing::Test {
protected:
  /// An event with this key code and these flags, after it was rewritten.
  struct Rewritten {
    bool done;
    std::int64_t keyCode;
    std::uint64_t flags;
    friend bool operator==(const Rewritten&, const Rewritten&) = default;
  };
  Rewritten rewritten(int keyCode, std::uint64_t flags, std::string_view name,
                      bool isPress = true) {
    const auto event = darwin::CFRef<CGEventRef>::adopt(
        CGEventCreateKeyboardEvent(nullptr, static_cast<CGKeyCode>(keyCode), isPress));
    CGEventSetFlags(event.get(), flags);
    const bool done = darwin::rewriteModifier(event.get(), KeyName(name), isPress);
    return {done, CGEventGetIntegerValueField(event.get(), kCGKeyboardEventKeycode),
            CGEventGetFlags(event.get())};
  }

  Computer computer;
};

TEST_F(RewriteTest, aModifierBecomesAnotherWithItsFlags) {
  EXPECT_EQ(rewritten(54, rightCommand | leftShift, "left_command"),
            (Rewritten{true, 55, leftCommand | leftShift}));
  EXPECT_EQ(rewritten(54, rightCommand, "left_shift"), (Rewritten{true, 56, leftShift}));
}

TEST_F(RewriteTest, flagsAreLeftAloneWhenTheOldOneIsClear) {
  EXPECT_EQ(rewritten(54, leftShift, "left_command", false), (Rewritten{true, 55, leftShift}));
  EXPECT_EQ(rewritten(54, 0, "left_command"), (Rewritten{true, 55, 0}));
}

TEST_F(RewriteTest, nothingChangesForAKeyThatIsNoModifierOrIntoOne) {
  EXPECT_EQ(rewritten(54, rightCommand, "a"), (Rewritten{false, 54, rightCommand}));
  EXPECT_EQ(rewritten(54, rightCommand, "no such key"), (Rewritten{false, 54, rightCommand}));
  EXPECT_EQ(rewritten(0, rightCommand, "left_command"), (Rewritten{false, 0, rightCommand}));
  EXPECT_EQ(rewritten(200, rightCommand, "left_command"), (Rewritten{false, 200, rightCommand}));
}

TEST(LetsThroughTest, theLastActionThatSaysSoDecides) {
  using Rewrite = TapAction::Rewrite;
  const TapAction pass{TapAction::Pass{}};
  const TapAction suppress{TapAction::Suppress{}};
  const TapAction rewrite{Rewrite{KeyName("left_command")}};
  const TapAction replay{TapAction::Replay{}};
  EXPECT_TRUE(letsThrough({}));
  EXPECT_TRUE(letsThrough({replay}));
  EXPECT_TRUE(letsThrough({pass}));
  EXPECT_FALSE(letsThrough({suppress}));
  EXPECT_FALSE(letsThrough({suppress, replay}));
  EXPECT_TRUE(letsThrough({suppress, rewrite}));
  EXPECT_TRUE(letsThrough({suppress, replay, pass}));
  EXPECT_FALSE(letsThrough({pass, suppress}));
}

} // namespace

} // namespace trellivar
