#include "tests/engine/darwin/computer.h"

namespace trellivar {

namespace {

/// Devices that come and go, bindings that change and pads that are paused while keys are down:
/// what people have let go never stays down for the applications.
class DeviceChangeTest : public testing::Test {
protected:
  DeviceChangeTest() { computer.startEngine(); }

  void apply(std::vector<CustomKey> keys) { computer.engine->apply(customSet(std::move(keys))); }
  void ignore(bool ignored) {
    computer.engine->setDeviceIgnored(ignored, customIdentity.vendorId, customIdentity.productId);
  }
  void notice() { computer.pass(Computer::debounce.count()); }
  std::string heard() { return computer.heard(); }

  static MappingSet portableCommand() {
    MappingSet set = customSet({{{}, chordOutput({Modifier::command}, "c")}});
    set.portable = true;
    return set;
  }

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
};

TEST_F(DeviceChangeTest, aPadPluggedInLaterIsRemappedOnceItIsNoticed) {
  computer.desk.detach(pad);
  apply({{{"a"}, keyOutput("v")}});
  notice();
  pad = computer.attach(customIdentity);
  computer.pass(0.299);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "a+ a-");
  computer.pass(0.002);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(DeviceChangeTest, aPadThatComesBackUnderNewIdsIsRemappedAgain) {
  apply({{{"a"}, keyOutput("v")}});
  for (int i = 0; i < 3; ++i) {
    computer.desk.detach(pad);
    pad = computer.attach(customIdentity);
    notice();
    computer.tap(pad, "a");
    EXPECT_EQ(heard(), "*v+ *v-");
  }
}

TEST_F(DeviceChangeTest, aKeyThatWasLetThroughIsReleasedWhenItsPadIsPulled) {
  apply({{{"a"}, keyOutput("v")}});
  notice();
  computer.down(pad, "x");
  computer.down(pad, "left_shift");
  heard();
  computer.desk.detach(pad);
  EXPECT_EQ(heard(), "");
  notice();
  EXPECT_EQ(heard(), "*x- *left_shift-");
}

TEST_F(DeviceChangeTest, aKeyOfAPadWithoutAnyBindingIsReleasedWhenItsPadIsPulled) {
  apply({{{"a"}, {}}});
  notice();
  computer.down(pad, "a");
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(heard(), "a+ *a-");
}

TEST_F(DeviceChangeTest, aModifierThatWasRewrittenIsReleasedAsWhatItBecame) {
  computer.engine->apply(portableCommand());
  notice();
  computer.down(pad, "right_command");
  EXPECT_EQ(heard(), "left_command+");
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(heard(), "*left_command-");
}

TEST_F(DeviceChangeTest, aBoundKeyWhosePadIsPulledLeavesNothingDown) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "a");
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(DeviceChangeTest, aKeyHeldBackIsGivenBackAndReleasedWhenItsPadWasPulled) {
  apply({{{"left_control", "f"}, keyOutput("v")}});
  notice();
  for (const double pulledAfter : {0.05, 0.4}) { // noticed before and after the window ends
    computer.down(pad, "left_control");
    computer.pass(pulledAfter);
    computer.desk.detach(pad);
    computer.pass(1);
    EXPECT_EQ(heard(), "*left_control+ *left_control-") << "pulled after " << pulledAfter;
    EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
    pad = computer.attach(customIdentity);
    notice();
  }
}

TEST_F(DeviceChangeTest, anotherDeviceComingAndGoingReleasesNothing) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  heard();
  const auto other = computer.attach({1, 2});
  notice();
  computer.desk.detach(other);
  notice();
  EXPECT_EQ(heard(), "");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x-");
}

TEST_F(DeviceChangeTest, aKeyThatGetsABindingWhileItIsDownIsReleasedThen) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  apply({{{"x"}, keyOutput("v")}});
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "x+ *x-");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "");
}

TEST_F(DeviceChangeTest, aKeyThatIsHeldWhileItGetsABindingDoesNothingUntilItIsPressedAnew) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  computer.down(pad, "a");
  apply({{{"x"}, keyOutput("1")}, {{"a"}, keyOutput("2")}});
  computer.desk.queue().run();
  heard();
  computer.repeat(pad, "x");
  computer.repeat(pad, "a");
  EXPECT_EQ(heard(), "");
  computer.up(pad, "x");
  computer.up(pad, "a");
  EXPECT_EQ(heard(), "");
  computer.tap(pad, "x");
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "*1+ *1- *2+ *2-");
}

TEST_F(DeviceChangeTest, aModifierPressedBeforeItsPadWasNoticedIsReleasedWhileAKeyboardHoldsIt) {
  computer.desk.detach(pad);
  apply({{{"left_control", "c"}, keyOutput("v")}});
  notice();
  pad = computer.attach(customIdentity);
  computer.down(pad, "left_control");
  notice();
  computer.down(computer.keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control+ left_control+");
  computer.up(pad, "left_control");
  computer.pass(1);
  EXPECT_EQ(heard(), "left_control+") << "the keyboard holds it, and nothing is held back";
  computer.up(computer.keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control-");
}

TEST_F(DeviceChangeTest, aModifierWhoseReleaseWentByUnseenIsPressedAnewLikeAnyOther) {
  computer.desk.detach(pad);
  apply({{{"f"}, keyOutput("v")}});
  notice();
  pad = computer.attach(customIdentity);
  computer.down(pad, "left_option");
  notice();
  computer.desk.setTrusted(false);
  computer.engine->startTap();
  computer.up(pad, "left_option");
  computer.desk.setTrusted(true);
  computer.engine->startTap();
  heard();
  computer.down(pad, "left_option");
  EXPECT_EQ(heard(), "left_option+");
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(heard(), "*left_option-") << "the engine knows that it is down";
}

TEST_F(DeviceChangeTest, aKeyPressedBeforeItsPadWasNoticedIsReleasedAsItWasPressed) {
  computer.desk.detach(pad);
  apply({{{"a"}, keyOutput("v")}, {{"left_control", "f"}, keyOutput("w")}});
  notice();
  pad = computer.attach(customIdentity);
  computer.down(pad, "a");
  computer.down(pad, "left_control");
  notice();
  computer.repeat(pad, "a");
  computer.up(pad, "a");
  computer.up(pad, "left_control");
  EXPECT_EQ(heard(), "a+ left_control+ a+(left_control) a-(left_control) left_control-");
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(DeviceChangeTest, aKeyWhoseReleaseStillPassesIsLeftDown) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  apply({{{"b"}, keyOutput("v")}});
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "x+");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x-");
}

TEST_F(DeviceChangeTest, aRewrittenModifierIsReleasedWhenItIsNoLongerRewritten) {
  computer.engine->apply(portableCommand());
  computer.down(pad, "right_command");
  apply({{{"a"}, keyOutput("v")}});
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "left_command+ *left_command-");
  computer.up(pad, "right_command");
  EXPECT_EQ(heard(), "right_command-") << "one release too many harms nobody";
}

TEST_F(DeviceChangeTest, aModifierThatBecomesRewrittenIsReleasedAsWhatItWas) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "right_command");
  computer.engine->apply(portableCommand());
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "right_command+ *right_command-");
}

TEST_F(DeviceChangeTest, aRewrittenModifierIsReleasedWhenItsPadIsPaused) {
  computer.engine->apply(portableCommand());
  computer.down(pad, "right_command");
  ignore(true);
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "left_command+ *left_command-");
}

TEST_F(DeviceChangeTest, aKeyOfAPausedPadIsReleasedWhenItsBindingComesBack) {
  apply({{{"a"}, keyOutput("v")}});
  ignore(true);
  computer.down(pad, "a");
  EXPECT_EQ(heard(), "a+");
  ignore(false);
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "*a-");
  computer.up(pad, "a");
  EXPECT_EQ(heard(), "");
}

TEST_F(DeviceChangeTest, pausingReleasesNothingWhoseReleaseWillPass) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  ignore(true);
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "x+");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x-");
}

TEST_F(DeviceChangeTest, aBoundKeyReleasedDuringAPauseWorksAgainAfterwards) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "a");
  ignore(true);
  computer.up(pad, "a");
  ignore(false);
  heard();
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(DeviceChangeTest, aKeyHeldBackWhenThePadIsPausedIsGivenBackBeforeItsReleaseCanPass) {
  apply({{{"left_control", "f"}, keyOutput("v")}});
  computer.down(pad, "left_control");
  ignore(true);
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.up(pad, "left_control");
  computer.pass(1);
  EXPECT_EQ(heard(), "*left_control+ left_control-");
}

TEST_F(DeviceChangeTest, aKeyHeldBackStaysSoWhenAnotherPadIsPaused) {
  apply({{{"left_control", "f"}, keyOutput("v")}});
  computer.down(pad, "left_control");
  computer.engine->setDeviceIgnored(true, 1, 2);
  computer.down(pad, "f");
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(DeviceChangeTest, newBindingsDropWhatIsHeldBack) {
  apply({{{"left_control", "f"}, keyOutput("v")}});
  computer.down(pad, "left_control");
  apply({{{"left_control", "f"}, keyOutput("w")}});
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.pass(1);
  EXPECT_EQ(heard(), "");
  computer.up(pad, "left_control");
  EXPECT_EQ(heard(), "left_control-");
}

TEST_F(DeviceChangeTest, aPadThatLosesItsBindingsKeepsItsKeys) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  computer.engine->applyAll({});
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "x+");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x-");
  EXPECT_FALSE(computer.engine->status("").trellivarGrabbed);
}

TEST_F(DeviceChangeTest, aPadThatLosesItsBindingsAsItGoesLeavesNothingDown) {
  apply({{{"a"}, keyOutput("v")}});
  computer.down(pad, "x");
  computer.desk.detach(pad);
  computer.engine->applyAll({});
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "x+ *x-");
}

TEST_F(DeviceChangeTest, aModifierWhosePadWasPulledIsGoneFromTheKeysThatFollow) {
  apply({{{"left_control", "f"}, keyOutput("v")}, {{"q", "w"}, keyOutput("b")}});
  notice();
  computer.down(pad, "left_shift");
  computer.desk.detach(pad);
  notice();
  EXPECT_EQ(heard(), "left_shift+ *left_shift-");
  EXPECT_EQ(computer.desk.events().sessionFlags(), 0U);
  computer.tap(computer.keyboard, "z");
  EXPECT_EQ(heard(), "z+ z-");
}

} // namespace

} // namespace trellivar
