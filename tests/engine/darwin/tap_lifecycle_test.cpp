#include "tests/engine/darwin/computer.h"

namespace trellivar {

namespace {

class TapLifecycleTest : public testing::Test {
protected:
  void start() {
    computer.startEngine();
    computer.engine->apply(customSet({{{"a"}, keyOutput("v")}, {{"left_control", "f"}, {}}}));
  }
  std::string tapped() {
    computer.tap(pad, "a");
    return computer.heard();
  }

  static constexpr const char* remapped = "*v+ *v-";
  static constexpr const char* untouched = "a+ a-";

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
};

TEST_F(TapLifecycleTest, startingAgainInstallsNoSecondTap) {
  start();
  computer.engine->startTap();
  computer.engine->startTap();
  EXPECT_EQ(computer.platform.taps(), 1U);
  EXPECT_TRUE(computer.engine->tapActive());
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, nothingIsInstalledWithoutPermission) {
  computer.desk.setTrusted(false);
  computer.platform.setUntrustedTap(darwin_double::Platform::UntrustedTap::deaf);
  start();
  EXPECT_FALSE(computer.engine->tapActive());
  EXPECT_EQ(computer.platform.taps(), 0U) << "a tap from before the permission stays deaf";
  computer.desk.setTrusted(true);
  EXPECT_EQ(tapped(), untouched);
  computer.engine->startTap();
  EXPECT_TRUE(computer.engine->tapActive());
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, aTapThatTheSystemRefusesIsNotTakenForInstalled) {
  computer.desk.faults().failingTaps = 2;
  start();
  EXPECT_FALSE(computer.engine->tapActive()) << "whatever the trust query says";
  EXPECT_TRUE(computer.engine->status("").accessibilityGranted);
  EXPECT_EQ(tapped(), untouched);
  computer.engine->startTap();
  EXPECT_FALSE(computer.engine->tapActive());
  computer.engine->startTap();
  EXPECT_TRUE(computer.engine->tapActive());
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, aTapThatTheSystemDisabledIsEnabledAgain) {
  start();
  for (const auto notice : {InputEvent::tapDisabledByTimeout, InputEvent::tapDisabledByUserInput}) {
    computer.desk.events().disableTaps(notice);
    EXPECT_EQ(tapped(), remapped);
    EXPECT_EQ(computer.platform.taps(), 1U);
  }
}

TEST_F(TapLifecycleTest, aTapThatIsFoundDisabledIsEnabledByTheNextStart) {
  start();
  computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout); // the notice is on its way
  computer.engine->startTap();
  computer.desk.press(pad, KeyName("a"));
  computer.desk.queue().run();
  EXPECT_EQ(computer.heard(), remapped);
}

TEST_F(TapLifecycleTest, aTapThatIsNoLongerPermittedIsRemovedAndFreezesNothing) {
  start();
  computer.desk.setTrusted(false);
  EXPECT_EQ(tapped(), untouched);
  EXPECT_FALSE(computer.engine->tapActive());
  EXPECT_EQ(computer.platform.taps(), 0U);
  EXPECT_FALSE(computer.desk.events().isFrozen());
  computer.desk.setTrusted(true);
  computer.engine->startTap();
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, startingWithoutPermissionRemovesATapThatIsLeft) {
  start();
  computer.desk.setTrusted(false);
  computer.engine->startTap();
  EXPECT_EQ(computer.platform.taps(), 0U);
  EXPECT_EQ(tapped(), untouched);
}

TEST_F(TapLifecycleTest, aKeyReleasedWhileTheTapWasDisabledWorksAgainAtOnce) {
  start();
  computer.down(pad, "a");
  computer.desk.release(pad, KeyName("a"));
  computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
  computer.desk.queue().run();
  computer.heard();
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, aKeyPressedWhileTheTapWasDisabledIsReleasedAsItWasPressed) {
  start();
  computer.desk.press(pad, KeyName("a"));
  computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
  computer.desk.queue().run();
  EXPECT_EQ(computer.heard(), "a+");
  computer.up(pad, "a");
  EXPECT_EQ(computer.heard(), "a-");
  EXPECT_EQ(tapped(), remapped);
}

TEST_F(TapLifecycleTest, aKeyHeldBackIsGivenAsAShortPressWhenTheTapWasDisabled) {
  start();
  computer.engine->apply(customSet({{{"left_control", "f"}, keyOutput("v")}}));
  for (const bool releasedUnseen : {true, false}) {
    computer.down(pad, "left_control");
    if (releasedUnseen) computer.desk.release(pad, KeyName("left_control"));
    computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
    computer.pass(1);
    computer.up(pad, "left_control");
    EXPECT_EQ(computer.heard(), releasedUnseen ? "left_control- *left_control+ *left_control-"
                                               : "*left_control+ *left_control- left_control-");
    computer.down(pad, "left_control");
    computer.down(pad, "f");
    computer.up(pad, "f");
    computer.up(pad, "left_control");
    EXPECT_EQ(computer.heard(), "*v+ *v-") << "and the chord works at once";
  }
}

TEST_F(TapLifecycleTest, aRewrittenModifierIsReleasedWhenTheTapWasDisabled) {
  start();
  MappingSet set = customSet({{{}, chordOutput({Modifier::command}, "c")}});
  set.portable = true;
  computer.engine->apply(set);
  computer.down(pad, "right_command");
  computer.desk.release(pad, KeyName("right_command"));
  computer.desk.events().disableTaps(InputEvent::tapDisabledByTimeout);
  computer.desk.queue().run();
  EXPECT_EQ(computer.heard(), "left_command+ right_command- *left_command-");
}

TEST_F(TapLifecycleTest, anEngineThatGoesReleasesWhatItRenamed) {
  start();
  MappingSet set = customSet({{{}, chordOutput({Modifier::command}, "c")}});
  set.portable = true;
  computer.engine->apply(set);
  computer.down(pad, "right_command");
  computer.engine.reset();
  computer.up(pad, "right_command");
  EXPECT_EQ(computer.heard(), "left_command+ *left_command- right_command-");
}

TEST_F(TapLifecycleTest, whatWasDownWhenTheTapWasRemovedIsForgotten) {
  start();
  computer.engine->apply(customSet({{{"left_control", "f"}, keyOutput("v")}}));
  computer.down(pad, "left_control");
  computer.desk.setTrusted(false);
  computer.engine->startTap();
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.up(pad, "left_control");
  computer.desk.setTrusted(true);
  computer.engine->startTap();
  computer.pass(1);
  computer.heard();
  computer.down(pad, "left_control");
  computer.down(pad, "f");
  EXPECT_EQ(computer.heard(), "*v+ *v-");
}

TEST_F(TapLifecycleTest, whatWasOnItsWayWhenTheTapWasRemovedIsNotWaitedFor) {
  start();
  computer.engine->apply(customSet({{{"left_control", "f"}, keyOutput("v")}}));
  computer.down(pad, "left_control");
  computer.desk.setTrusted(false);
  computer.engine->startTap(); // gives back the press, which no tap sees
  computer.up(pad, "left_control");
  computer.desk.setTrusted(true);
  computer.engine->startTap();
  computer.down(pad, "left_control");
  computer.pass(1);
  computer.heard();
  computer.up(pad, "left_control");
  EXPECT_EQ(computer.heard(), "left_control-") << "the pad's own release, not one of the engine";
}

TEST_F(TapLifecycleTest, aNoticeInstallsNoTapWhereThereIsNone) {
  computer.engine = std::make_unique<TapEngine>(
      computer.desk.queue(), std::make_shared<IOKitSenderResolver>(), nullptr, [] { return true; },
      [] { return true; });
  EXPECT_EQ(computer.engine->handle(kCGEventTapDisabledByTimeout, nullptr), nullptr);
  EXPECT_FALSE(computer.engine->tapActive());
}

TEST_F(TapLifecycleTest, theTapGoesWithTheEngine) {
  start();
  computer.engine.reset();
  EXPECT_EQ(computer.platform.taps(), 0U);
  EXPECT_EQ(tapped(), untouched);
}

/// Puts a listener at the same place behind the engine's tap.
TEST_F(TapLifecycleTest, aTapThatStoodThereEarlierSeesWhatTheEngineMadeOfIt) {
  std::vector<std::uint32_t> types;
  computer.desk.events().addTap({.level = desk::EventStream::Level::session,
                                 .isFilter = false,
                                 .mask = ~std::uint64_t{0},
                                 .handle =
                                     [&](const InputEvent& event) {
                                       types.push_back(event.type);
                                       return std::optional(event);
                                     },
                                 .disabled = {}});
  start();
  computer.tap(pad, "a");
  EXPECT_EQ(types, (std::vector{InputEvent::keyDown, InputEvent::keyUp}))
      << "only what the engine posted";
  computer.heard();
}

} // namespace

} // namespace trellivar
