#include "engine/engine_error.h"
#include "tests/engine/darwin/tap_engine_fixture.h"

namespace trellivar {

namespace {

TEST_F(TapEngineTest, aBoundKeyIsReplacedByItsOutput) {
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, theOrdinaryKeyboardIsLeftAlone) {
  computer.tap(keyboard, "a");
  EXPECT_EQ(heard(), "a+ a-");
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
}

TEST_F(TapEngineTest, aPadKeyWithoutABindingPasses) {
  computer.tap(pad, "x");
  EXPECT_EQ(heard(), "x+ x-");
}

TEST_F(TapEngineTest, aKeyWithoutANamePasses) {
  constexpr std::int64_t keypadEnter = 76;
  constexpr std::int64_t capsLock = 57;
  send(InputEvent::keyDown, keypadEnter);
  send(InputEvent::flagsChanged, capsLock);
  ASSERT_EQ(computer.desk.events().received().size(), 2U);
  EXPECT_EQ(computer.desk.events().received()[0].event.field(InputEvent::keyCode), keypadEnter);
  EXPECT_EQ(computer.desk.events().received()[1].event.field(InputEvent::keyCode), capsLock);
}

TEST_F(TapEngineTest, aChordIsReplacedAndItsKeysAreNeverSeen) {
  computer.down(pad, "left_control");
  EXPECT_EQ(heard(), "");
  computer.pass(0.1);
  computer.down(pad, "f");
  EXPECT_EQ(heard(), "*v+ *v-");
  computer.up(pad, "f");
  computer.up(pad, "left_control");
  computer.pass(1);
  EXPECT_EQ(heard(), "");
}

TEST_F(TapEngineTest, aTimerRunsWhileAKeyIsHeldBackAndOnlyThen) {
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.down(pad, "left_control");
  EXPECT_EQ(computer.platform.scheduledTimers(), 1U);
  computer.down(pad, "f");
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
}

TEST_F(TapEngineTest, aChordKeyHeldPastTheWindowIsGivenBackOnTime) {
  computer.down(pad, "left_control");
  computer.pass(0.499);
  EXPECT_EQ(heard(), "");
  computer.pass(0.002);
  EXPECT_EQ(heard(), "*left_control+");
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.up(pad, "left_control");
  EXPECT_EQ(heard(), "left_control-");
}

TEST_F(TapEngineTest, aChordKeyIsGivenBackWhileAMenuIsOpen) {
  computer.desk.setTracking(true);
  computer.down(pad, "left_control");
  computer.pass(0.6);
  EXPECT_EQ(heard(), "*left_control+");
}

TEST_F(TapEngineTest, aReleaseDoesNotOvertakeThePressThatIsGivenBack) {
  computer.down(pad, "left_control");
  // One report of the pad: another key goes down and the held one comes up.
  computer.desk.press(pad, KeyName("x"));
  computer.desk.release(pad, KeyName("left_control"));
  computer.desk.queue().run();
  EXPECT_EQ(heard(), "*left_control+ *x+(left_control) *left_control-");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x-");
}

TEST_F(TapEngineTest, aModifierThatWasGivenBackStillHoldsForTheKeysThatFollow) {
  computer.down(pad, "left_control");
  computer.pass(0.6);
  heard();
  computer.tap(pad, "f");
  EXPECT_EQ(heard(), "*f+(left_control) *f-(left_control)");
}

TEST_F(TapEngineTest, aKeyThatWasHeldBackKeepsTheShiftOfTheKeyboard) {
  computer.down(keyboard, "left_shift");
  computer.tap(pad, "f");
  EXPECT_EQ(heard(), "left_shift+ *f+(left_shift) *f-(left_shift)");
}

TEST_F(TapEngineTest, aKeyThatWasHeldBackDoesNotTellOfTheOneStillHeldBack) {
  computer.engine->apply(customSet(
      {{{"left_control", "left_option", "f"}, keyOutput("v")}, {{"q", "w"}, keyOutput("b")}}));
  computer.down(pad, "left_control");
  computer.down(pad, "q");
  computer.up(pad, "q");
  EXPECT_EQ(heard(), "*left_control+ *q+(left_control) *q-(left_control)");
}

TEST_F(TapEngineTest, aBindingDoesWhatItSaysWhateverElseIsHeld) {
  computer.down(keyboard, "left_shift");
  heard();
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, holdingABoundKeyDoesNotRepeatItsOutput) {
  computer.down(pad, "a");
  heard();
  for (int i = 0; i < 5; ++i)
    computer.repeat(pad, "a");
  computer.up(pad, "a");
  EXPECT_EQ(heard(), "");
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, holdingAKeyWithoutABindingRepeatsIt) {
  computer.down(pad, "x");
  computer.repeat(pad, "x");
  computer.repeat(pad, "x");
  computer.up(pad, "x");
  EXPECT_EQ(heard(), "x+ x+ x+ x-");
}

TEST_F(TapEngineTest, twoPadsDoNotMixTheirKeys) {
  const auto other = computer.attach(customIdentity);
  computer.pass(Computer::debounce.count());
  computer.down(pad, "left_control");
  computer.down(other, "f");
  EXPECT_EQ(heard(), "");
  computer.down(other, "left_control");
  EXPECT_EQ(heard(), "*v+ *v-");
  computer.pass(1);
  EXPECT_EQ(heard(), "*left_control+");
}

TEST_F(TapEngineTest, twoPadsOfDifferentKindsHaveBindingsOfTheirOwn) {
  constexpr DeviceIdentity otherIdentity{0x7777, 0x0043};
  const auto other = computer.attach(otherIdentity);
  const std::vector sets{bindings(), customSet({{{"a"}, keyOutput("z")}}, otherIdentity)};
  computer.engine->applyAll(sets);
  computer.tap(pad, "a");
  computer.tap(other, "a");
  EXPECT_EQ(heard(), std::string(commandC) + " *z+ *z-");
}

TEST_F(TapEngineTest, whatTheEnginePostsIsNeverHandledAgain) {
  computer.engine->apply(customSet({{{"a"}, keyOutput("a")}}));
  computer.platform.setPostedSender(static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x07)));
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "*a+ *a-");
}

TEST_F(TapEngineTest, mediaKeysAndMouseButtonsOfThePadFire) {
  MappingSet set = customSet({{{"x"}, keyOutput("1")}, {{"y"}, keyOutput("2")}});
  set.device.layout.keys[0].signature.codes = {{KeyName("mute"), Key::Kind::consumerKeyCode}};
  set.device.layout.keys[1].signature.codes = {{KeyName("button3"), Key::Kind::pointingButton}};
  computer.engine->apply(set);
  computer.tap(pad, "mute");
  computer.tap(pad, "button3");
  EXPECT_EQ(heard(), "*1+ *1- *2+ *2-");
}

TEST_F(TapEngineTest, otherSystemDefinedEventsOfThePadPass) {
  MappingSet set = customSet({{{"x"}, keyOutput("1")}});
  set.device.layout.keys[0].signature.codes = {{KeyName("mute"), Key::Kind::consumerKeyCode}};
  computer.engine->apply(set);
  constexpr int muteKey = 7;
  for (const int subtype : {1, 7, 8}) {
    InputEvent event;
    event.type = InputEvent::systemDefined;
    event.subtype = subtype;
    event.data1 = (muteKey << 16) | (InputEvent::auxiliaryDown << 8);
    event.setField(InputEvent::senderId,
                   static_cast<std::int64_t>(computer.desk.leafSender(pad, 0x0C)));
    computer.desk.events().post(desk::EventStream::Level::hid, event);
  }
  computer.desk.queue().run();
  const auto& received = computer.desk.events().received();
  ASSERT_EQ(received.size(), 4U);
  EXPECT_EQ(received[0].event.subtype, 1);
  EXPECT_EQ(received[1].event.subtype, 7);
  computer.desk.events().clearReceived();
}

TEST_F(TapEngineTest, aRefusedSetChangesNothing) {
  MappingSet set = customSet({{{"a"}, keyOutput("1")}, {{"b"}, keyOutput("2")}});
  set.device.layout.keys[1].id = 1;
  try {
    computer.engine->apply(set);
    FAIL() << "was accepted";
  } catch (const EngineError& error) {
    EXPECT_EQ(error, EngineError::lintFailed("The layout of Custom names key 1 twice."));
  }
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, applyReplacesWhatWasAppliedBefore) {
  constexpr DeviceIdentity otherIdentity{0x7777, 0x0043};
  const auto other = computer.attach(otherIdentity);
  computer.engine->apply(customSet({{{"a"}, keyOutput("z")}}, otherIdentity));
  computer.tap(pad, "a");
  computer.tap(other, "a");
  EXPECT_EQ(heard(), "a+ a- *z+ *z-");
}

TEST_F(TapEngineTest, aPadInUseIsIgnoredAndTakenBack) {
  for (int i = 0; i < 2; ++i) // repeating it changes nothing
    computer.engine->setDeviceIgnored(true, customIdentity.vendorId, customIdentity.productId);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "a+ a-");
  EXPECT_TRUE(computer.engine->isDeviceReleased("Custom"));
  for (int i = 0; i < 2; ++i)
    computer.engine->setDeviceIgnored(false, customIdentity.vendorId, customIdentity.productId);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
  EXPECT_TRUE(computer.engine->isDeviceReleased("Custom"));
}

TEST_F(TapEngineTest, theKindOfADeviceThatIsIgnoredDoesNotMatter) {
  RemapEngine& engine = *computer.engine;
  engine.setDeviceIgnored(true, customIdentity.vendorId, customIdentity.productId,
                          DeviceKind::pointing);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "a+ a-");
  engine.setDeviceIgnored(false, customIdentity.vendorId, customIdentity.productId,
                          DeviceKind::consumer);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, otherDevicesAreNotIgnoredAlong) {
  computer.engine->setDeviceIgnored(true, customIdentity.vendorId, customIdentity.productId + 1);
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), commandC);
}

TEST_F(TapEngineTest, theStatusTellsWhatIsPermittedAndWhetherAPadIsThere) {
  EXPECT_EQ(computer.engine->status("any"), (EngineStatus{true, true, true}));
  computer.desk.detach(pad);
  computer.pass(Computer::debounce.count());
  EXPECT_EQ(computer.engine->status(""), (EngineStatus{true, true, false}));
  computer.desk.setTrusted(false);
  EXPECT_EQ(computer.engine->status(""), (EngineStatus{false, true, false}));
  computer.desk.setInputMonitoring(desk::Access::unknown);
  EXPECT_EQ(computer.engine->status(""), (EngineStatus{false, false, false}));
}

TEST_F(TapEngineTest, anEngineThatGoesWhileAKeyIsHeldBackLeavesNothingBehind) {
  computer.down(pad, "left_control");
  computer.engine.reset();
  EXPECT_EQ(computer.platform.scheduledTimers(), 0U);
  computer.pass(1);
  EXPECT_EQ(heard(), "*left_control+ *left_control-") << "the press is not lost";
  computer.tap(pad, "a");
  EXPECT_EQ(heard(), "a+(left_control) a-(left_control)");
}

TEST(TapEngineWithoutHotplugTest, resolvesThePadsThatAreThereWhenBindingsAreApplied) {
  Computer computer;
  const auto pad = computer.attach(customIdentity);
  computer.engine = std::make_unique<TapEngine>(
      computer.desk.queue(), std::make_shared<IOKitSenderResolver>(), nullptr, [] { return true; },
      [] { return false; });
  computer.engine->startTap();
  computer.engine->apply(customSet({{{"a"}, keyOutput("v")}}));
  computer.tap(pad, "a");
  EXPECT_EQ(computer.heard(), "*v+ *v-");
  EXPECT_EQ(computer.engine->status(""), (EngineStatus{true, false, true}));
}

} // namespace

} // namespace trellivar
