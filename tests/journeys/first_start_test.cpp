#include "tests/journeys/user.h"

namespace trellivar {
namespace {

using State = OnboardingStepState;
using Defaults = std::map<std::string, MemoryUserDefaults::Value, std::less<>>;

class FirstStart : public testing::Test {
protected:
  FirstStart() {
    user.machine.desk.setTrusted(false);
    user.machine.desk.setInputMonitoring(desk::Access::unknown);
  }
  const OnboardingSteps& steps() { return *user.root().onboarding().steps(); }

  static constexpr const char* untouched =
      "left_control+ c+(left_control) c-(left_control) left_control-";
  User user;
};

TEST_F(FirstStart, leadsToTheFirstRemappedKey) {
  user.start();
  EXPECT_EQ(steps(), (OnboardingSteps{State::active, State::pending, State::pending, false}));
  EXPECT_EQ(user.storedProfiles().size(), 3U) << "a profile for each mode, from the start";
  user.connect(User::Link::usb);
  EXPECT_EQ(user.heardOf(1), untouched);

  user.permit(true, false);
  EXPECT_EQ(steps(), (OnboardingSteps{State::done, State::active, State::pending, false}));
  user.permit(true, true);
  EXPECT_EQ(steps(), (OnboardingSteps{State::done, State::done, State::active, true}));
  EXPECT_EQ(user.heardOf(1), untouched) << "nothing is bound";

  user.assign(1, keyOutput("v")); // what the pad sends on the cable is known
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.pass(AppRoot::pollInterval.count());
  EXPECT_EQ(steps(), (OnboardingSteps{State::done, State::done, State::done, true}));
  EXPECT_EQ(user.storedMappings("P"), (std::vector<KeyMapping>{{1, keyOutput("v"), {}}}));
}

TEST_F(FirstStart, accessibilityComesBeforeInputMonitoring) {
  user.start();
  user.permit(false, true);
  EXPECT_EQ(steps(), (OnboardingSteps{State::active, State::done, State::pending, false}));
  EXPECT_TRUE(user.loginItem.empty());
}

TEST_F(FirstStart, startAtLoginIsSwitchedOnOnce) {
  user.start();
  user.permit(true, false);
  EXPECT_TRUE(user.loginItem.empty());
  user.permit(true, true);
  EXPECT_EQ(user.loginItem, std::vector<bool>{true});
  EXPECT_EQ(user.defaults->values(),
            (Defaults{{"didAutoEnableLoginItem", true}, {"startAtLogin", true}}));

  user.app().settings->setStartAtLogin(false);
  user.permit(false, false);
  user.permit(true, true);
  user.restart();
  user.pass(10);
  EXPECT_EQ(user.loginItem, (std::vector<bool>{true, false})) << "switched off is switched off";
  EXPECT_FALSE(*user.app().settings->startAtLogin());
}

TEST_F(FirstStart, aWindowThatIsClosedStopsLookingAndGoesOnWhenShownAgain) {
  user.start();
  user.root().stop();
  user.permit(true, true);
  user.pass(10);
  EXPECT_EQ(steps().accessibility, State::active);
  user.root().start();
  EXPECT_EQ(steps().accessibility, State::done);
}

class Permissions : public testing::Test {
protected:
  Permissions() {
    user.start();
    user.connect(User::Link::usb);
    user.assign(1, keyOutput("v"));
    user.heard();
  }

  User user;
};

TEST_F(Permissions, takenAwayAndGivenAgainNeedNoRestart) {
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  user.permit(false, false);
  EXPECT_EQ(user.machine.platform.taps(), 0U) << "a tap that may not answer stops all input";
  EXPECT_EQ(user.heardOf(1), "left_control+ c+(left_control) c-(left_control) left_control-");
  EXPECT_EQ(user.root().onboarding().steps()->accessibility, State::active);
  user.permit(true, true);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
  EXPECT_EQ(user.root().onboarding().steps()->device, State::done);
}

TEST_F(Permissions, takenAwayWhileAKeyIsHeldLeaveNothingDown) {
  user.hold(1);
  user.permit(false, true);
  user.letGo(1);
  user.pass(1);
  EXPECT_EQ(user.held(), "");
  user.permit(true, true);
  EXPECT_EQ(user.heardOf(1), "*v+ *v-");
}

TEST_F(Permissions, aLearnHearsThePadOnceItIsPermitted) {
  user.permit(true, false);
  user.turnTo("R");
  user.learn(3);
  user.press(3);
  user.pass(1);
  EXPECT_TRUE(*user.mapping().isLearning()) << "nothing was heard";
  user.permit(true, true);
  user.press(3);
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_TRUE(user.mapping().hasSignature(3));
  EXPECT_EQ(user.completed, 1);
  EXPECT_TRUE(user.app().engine->exempted.empty());
}

TEST_F(Permissions, aLearnThatMayNotHearAnythingEndsAfterThreePeriods) {
  user.permit(true, false);
  user.turnTo("R");
  user.learn(3);
  user.pass(3 * 12 + 3 * 0.1);
  EXPECT_FALSE(*user.mapping().isLearning());
  EXPECT_EQ(user.error(), text(L10n::Key::errNoCatchKey));
  EXPECT_TRUE(user.app().engine->exempted.empty());
  EXPECT_EQ(user.completed, 1);
}

TEST_F(Permissions, takenAwayDuringALearnAndGivenAgain) {
  user.turnTo("R");
  user.learn(3);
  user.permit(false, false);
  user.pass(12); // into the second period, which may not listen
  user.permit(true, true);
  user.press(3);
  user.pass(0.6);
  EXPECT_TRUE(user.mapping().hasSignature(3));
  EXPECT_TRUE(user.app().engine->exempted.empty());
}

TEST_F(Permissions, aRecordingHearsTheKeyboardOnceItIsPermitted) {
  user.permit(true, false);
  user.record(1);
  user.type({"left_command", "x"});
  user.pass(1);
  EXPECT_TRUE(*user.mapping().isRecording());
  user.permit(true, true);
  user.type({"left_command", "x"});
  user.pass(0.6);
  EXPECT_FALSE(*user.mapping().isRecording());
  EXPECT_EQ(user.storedMappings("P"),
            (std::vector<KeyMapping>{{1, chordOutput({Modifier::command}, "x"), {}}}));
}

TEST_F(Permissions, aRecordingWithoutAccessibilityBindsAllTheSame) {
  user.permit(false, true);
  user.record(1);
  user.type({"x"});
  user.pass(0.6);
  EXPECT_EQ(user.mapping().mapping(1)->output, (Output{Output::Sequence{{plainKey("x")}}}));
  user.permit(true, true);
  EXPECT_EQ(user.heardOf(1), "*x+ *x-");
}

} // namespace
} // namespace trellivar
