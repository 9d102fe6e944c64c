#include "engine/capture_interpreter.h"
#include "engine/darwin/iokit_key_capturer.h"
#include "tests/engine/darwin/computer.h"
#include "tests/support/log_since.h"

#include <unistd.h>

namespace trellivar {

namespace {

constexpr DeviceIdentity keyboardIdentity{0x1234, 0x0001};

class KeyCapturerTest : public testing::Test {
protected:
  void start(double maxDuration = 12) {
    capturer->capture(Seconds(maxDuration), [this](std::vector<DeviceKeyEvent> events) {
      ++completions;
      captured = std::move(events);
      endedAt = computer.desk.queue().now();
    });
  }

  /// "a+ a-", with "!" in front of modifiers.
  std::string text() const {
    std::string result;
    for (const DeviceKeyEvent& event : captured) {
      result += (result.empty() ? "" : " ") + std::string(event.event.isModifier ? "!" : "") +
                event.event.key.keyCode.text() +
                (event.event.phase == KeyEvent::Phase::down ? "+" : "-");
    }
    return result;
  }

  double elapsed() const { return endedAt.time_since_epoch().count(); }

  Computer computer;
  desk::Desk::DeviceId pad = computer.attach(customIdentity);
  desk::Desk::DeviceId keyboard = computer.keyboard;
  std::unique_ptr<IOKitKeyCapturer> capturer =
      std::make_unique<IOKitKeyCapturer>(computer.desk.queue());
  int completions = 0;
  std::vector<DeviceKeyEvent> captured;
  Instant endedAt{};
};

TEST_F(KeyCapturerTest, aCaptureEndsHalfASecondAfterTheLastRelease) {
  start();
  computer.pass(1);
  computer.down(pad, "a");
  computer.pass(0.3);
  computer.up(pad, "a");
  computer.pass(0.499);
  EXPECT_EQ(completions, 0);
  computer.pass(0.002);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "a+ a-");
  EXPECT_NEAR(elapsed(), 1.8, 1e-9);
  computer.pass(20);
  EXPECT_EQ(completions, 1) << "exactly once";
}

TEST_F(KeyCapturerTest, eventsCarryTheirDeviceAndTheTimeSinceTheFirst) {
  start();
  computer.pass(1);
  computer.down(keyboard, "left_shift");
  computer.pass(0.25);
  computer.down(pad, "b");
  computer.up(pad, "b");
  computer.up(keyboard, "left_shift");
  computer.pass(1);
  ASSERT_EQ(text(), "!left_shift+ b+ b- !left_shift-");
  EXPECT_EQ(captured[0].identity(), keyboardIdentity);
  EXPECT_EQ(captured[0].event.timestamp, 0);
  EXPECT_EQ(captured[0].event.key.kind, Key::Kind::keyCode);
  EXPECT_EQ(captured[1].identity(), customIdentity);
  EXPECT_NEAR(captured[1].event.timestamp, 0.25, 1e-9);
}

TEST_F(KeyCapturerTest, keyboardsConsumerControlsMiceAndDigitizersAreHeard) {
  start();
  computer.tap(pad, "volume_increment");
  computer.tap(pad, "button3");
  computer.tap(pad, "next_track");
  const auto tablet = computer.desk.attach({.product = "Tablet",
                                            .identity = {5, 6},
                                            .interfaces = {{DeviceDescription::mouse, {0x0D, 2}}}});
  computer.desk.queue().run();
  computer.desk.report(tablet, {0x0D, 66}, 1);
  computer.desk.report(tablet, {0x0D, 66}, 0);
  computer.pass(1);
  ASSERT_EQ(text(), "volume_increment+ volume_increment- button3+ button3- fast_forward+ "
                    "fast_forward- digitizer_66+ digitizer_66-");
  EXPECT_EQ(captured[0].event.key.kind, Key::Kind::consumerKeyCode);
  EXPECT_EQ(captured[2].event.key.kind, Key::Kind::pointingButton);
  EXPECT_EQ(captured[6].event.key.kind, Key::Kind::unmappable);
}

TEST_F(KeyCapturerTest, whatIsNoKnownKeyIsIgnoredAndKeepsNothingOpen) {
  start();
  computer.down(pad, "f1");
  computer.down(pad, "button4");
  computer.desk.report(pad, {0x07, 0xFFFFFFF}, 1);
  computer.desk.report(pad, {0x07, 1}, 1); // too many keys at once
  computer.tap(pad, "a");
  computer.pass(0.6);
  EXPECT_EQ(completions, 1) << "unknown keys that are down do not count as held";
  EXPECT_EQ(text(), "a+ a-");
}

TEST_F(KeyCapturerTest, anUnknownKeyDoesNotPostponeTheEnd) {
  start();
  computer.tap(pad, "a");
  computer.pass(0.4);
  computer.tap(pad, "f1");
  computer.pass(0.11);
  EXPECT_EQ(completions, 1);
}

TEST_F(KeyCapturerTest, aKeyThatIsNeverReleasedKeepsTheCaptureOpenUntilItsTimeIsUp) {
  start();
  computer.down(pad, "a");
  computer.tap(pad, "b");
  computer.pass(11.9);
  EXPECT_EQ(completions, 0);
  computer.pass(0.2);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "a+ b+ b-");
  EXPECT_NEAR(elapsed(), 12, 1e-9);
}

TEST_F(KeyCapturerTest, aReleaseWithoutAPressNeverCountsAsHeldLessThanNothing) {
  computer.down(pad, "a");
  start();
  computer.up(pad, "a"); // was down before the capture
  computer.down(pad, "b");
  computer.pass(2);
  EXPECT_EQ(completions, 0) << "b is held";
  computer.up(pad, "b");
  computer.pass(0.6);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "a- b+ b-");
}

TEST_F(KeyCapturerTest, anotherPressPostponesTheEnd) {
  start();
  computer.tap(pad, "a");
  computer.pass(0.4);
  computer.down(pad, "b");
  computer.pass(3);
  EXPECT_EQ(completions, 0);
  computer.up(pad, "b");
  computer.pass(0.6);
  EXPECT_EQ(text(), "a+ a- b+ b-");
}

TEST_F(KeyCapturerTest, aValueOtherThanOneIsARelease) {
  start();
  computer.desk.report(pad, {0x07, 4}, 2);
  computer.desk.report(pad, {0x07, 4}, -1);
  computer.pass(1);
  EXPECT_EQ(text(), "a- a-");
}

TEST_F(KeyCapturerTest, nothingPressedIsAnEmptyList) {
  start(3);
  computer.pass(2.9);
  EXPECT_EQ(completions, 0);
  computer.pass(0.2);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "");
}

TEST_F(KeyCapturerTest, aDeviceThatMatchesTwiceIsHeardOnce) {
  const auto both =
      computer.desk.attach({.product = "Combined",
                            .identity = {5, 6},
                            .interfaces = {{DeviceDescription::keyboard, DeviceDescription::mouse,
                                            DeviceDescription::consumerControl}}});
  start();
  computer.tap(both, "a");
  computer.tap(both, "mute");
  computer.pass(1);
  EXPECT_EQ(text(), "a+ a- mute+ mute-");
}

TEST_F(KeyCapturerTest, aDeviceThatDoesNotTellWhoItIsHasZeros) {
  const auto nameless = computer.desk.attach(
      {.product = "?",
       .identity = {5, 6},
       .interfaces = {{DeviceDescription::keyboard}},
       .properties = {{"VendorID", std::nullopt}, {"ProductID", "not a number"}}});
  start();
  computer.tap(nameless, "a");
  computer.pass(1);
  ASSERT_EQ(text(), "a+ a-");
  EXPECT_EQ(captured[0].identity(), (DeviceIdentity{0, 0}));
}

TEST_F(KeyCapturerTest, aDevicePluggedInMeanwhileIsHeard) {
  start();
  computer.pass(1);
  const auto late = computer.attach({5, 6});
  computer.desk.queue().run();
  computer.tap(late, "a");
  computer.pass(1);
  EXPECT_EQ(text(), "a+ a-");
}

TEST_F(KeyCapturerTest, aPadPulledInTheMiddleOfAPressEndsByTime) {
  start(4);
  computer.down(pad, "a");
  computer.desk.detach(pad);
  computer.pass(3.9);
  EXPECT_EQ(completions, 0);
  computer.pass(0.2);
  EXPECT_EQ(text(), "a+");
}

TEST_F(KeyCapturerTest, withoutPermissionTheCaptureRunsOutWithNothing) {
  computer.desk.setInputMonitoring(desk::Access::denied);
  start(12);
  computer.tap(pad, "a");
  computer.pass(12.1);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "");
}

TEST_F(KeyCapturerTest, aPermissionThatOnlySeemsGrantedEndsWithNothing) {
  computer.desk.faults().deafOpens = true;
  start(12);
  computer.tap(pad, "a");
  computer.pass(12.1);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "");
}

TEST_F(KeyCapturerTest, openingIsTriedAgainUntilItSucceeds) {
  computer.desk.faults().failingOpens = 3;
  start();
  computer.tap(pad, "a"); // nobody hears it
  computer.pass(0.46);
  computer.tap(pad, "b");
  computer.pass(1);
  EXPECT_EQ(text(), "b+ b-");
}

TEST_F(KeyCapturerTest, aPermissionGrantedMeanwhileIsNoticed) {
  computer.desk.setInputMonitoring(desk::Access::denied);
  start();
  computer.pass(2);
  computer.desk.setInputMonitoring(desk::Access::granted);
  computer.pass(0.2);
  computer.tap(pad, "a");
  computer.pass(1);
  EXPECT_EQ(text(), "a+ a-");
}

TEST_F(KeyCapturerTest, openingIsNotTriedForLongerThanFiveSeconds) {
  computer.desk.faults().failingOpens = desk::Faults::forever;
  start();
  computer.pass(5.2);
  computer.desk.faults().failingOpens = 0;
  computer.pass(1);
  computer.tap(pad, "a");
  computer.pass(20);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(text(), "");
}

TEST_F(KeyCapturerTest, aShortCaptureIsShortOfOpeningTimeToo) {
  computer.desk.faults().failingOpens = desk::Faults::forever;
  start(1);
  computer.pass(0.95);
  EXPECT_EQ(completions, 0);
  computer.pass(0.1);
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
}

TEST_F(KeyCapturerTest, openingIsNotTriedAgainOnceSomethingWasHeard) {
  computer.desk.setInputMonitoring(desk::Access::denied);
  start();
  computer.tap(pad, "mute"); // consumer controls need no permission
  computer.down(pad, "volume_increment");
  computer.desk.setInputMonitoring(desk::Access::granted);
  computer.pass(1);
  computer.tap(pad, "a");
  computer.up(pad, "volume_increment");
  computer.pass(1);
  EXPECT_EQ(text(), "mute+ mute- volume_increment+ volume_increment-");
}

TEST_F(KeyCapturerTest, aNewCaptureFinishesTheOneThatIsRunning) {
  std::vector<DeviceKeyEvent> first;
  int firstCompletions = 0;
  capturer->capture(Seconds(12), [&](std::vector<DeviceKeyEvent> events) {
    ++firstCompletions;
    first = std::move(events);
  });
  computer.down(pad, "a");
  start();
  EXPECT_EQ(firstCompletions, 0) << "not within the call";
  computer.desk.queue().run();
  EXPECT_EQ(firstCompletions, 1);
  EXPECT_EQ(first.size(), 1U);
  computer.up(pad, "a");
  computer.tap(pad, "b");
  computer.pass(0.6);
  EXPECT_EQ(text(), "a- b+ b-");
  computer.pass(20);
  EXPECT_EQ(firstCompletions, 1);
  EXPECT_EQ(completions, 1);
}

TEST_F(KeyCapturerTest, aCaptureMayBeStartedFromTheEndOfAnother) {
  capturer->capture(Seconds(1), [&](const std::vector<DeviceKeyEvent>&) { start(); });
  computer.pass(1.1);
  computer.tap(pad, "a");
  computer.pass(1);
  EXPECT_EQ(text(), "a+ a-");
}

TEST_F(KeyCapturerTest, anOwnerThatGoesLeavesNothingBehind) {
  computer.desk.faults().failingOpens = 1;
  start();
  computer.tap(pad, "a");
  EXPECT_GT(computer.desk.queue().pendingCount(), 0U);
  capturer.reset();
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
  EXPECT_EQ(computer.platform.liveReferences(), std::vector<std::string>{});
  computer.pass(20);
  EXPECT_EQ(completions, 0);
}

TEST_F(KeyCapturerTest, anOwnerThatGoesTellsACaptureThatWasReplacedNothingEither) {
  start();
  start();
  capturer.reset();
  computer.pass(20);
  EXPECT_EQ(completions, 0);
}

TEST_F(KeyCapturerTest, afterACaptureNothingIsOpen) {
  start();
  computer.tap(pad, "a");
  computer.pass(1);
  EXPECT_EQ(computer.platform.liveReferences(), std::vector<std::string>{});
  EXPECT_EQ(computer.desk.queue().pendingCount(), 0U);
}

TEST_F(KeyCapturerTest, theEngineAndACaptureHearTheSamePress) {
  computer.startEngine();
  computer.engine->apply(customSet({{{"a"}, keyOutput("v")}}));
  start();
  computer.tap(pad, "a");
  computer.pass(1);
  EXPECT_EQ(text(), "a+ a-");
  EXPECT_EQ(computer.heard(), "*v+ *v-");
}

TEST_F(KeyCapturerTest, aPadKeyOfSeveralCodesGivesAChordSignature) {
  computer.pad.connect(desk::Pad::Link::usb);
  start();
  computer.tap(keyboard, "z"); // of another device
  computer.pressPad(1);
  computer.pass(1);
  const auto [vendor, product] = *computer.pad.identity();
  const auto signature = CaptureInterpreter::signature(captured, vendor, product);
  EXPECT_TRUE(signature.isChord);
  ASSERT_EQ(signature.codes.size(), 2U);
  EXPECT_EQ(signature.codes[0].keyCode.text(), "left_control");
  EXPECT_EQ(signature.codes[1].keyCode.text(), "c");
  EXPECT_EQ(CaptureInterpreter::output(captured, vendor, product),
            (Output{Output::Sequence{{plainKey("z")}}}))
      << "and the pad is no part of a recorded shortcut";
}

TEST_F(KeyCapturerTest, theLogTellsWhatACaptureHeard) {
  const int own = 20000 + getpid() % 10000; // other programs write to the same log
  const auto marked = computer.attach({own, own});
  computer.desk.faults().failingOpens = 1;
  const LogSince log;
  start();
  computer.pass(0.2);
  computer.tap(marked, "a");
  computer.pass(1);
  const std::string heard = log.text();
  const std::string ids = "] vid=" + std::to_string(own) + " pid=" + std::to_string(own);
  EXPECT_NE(heard.find("  event: a [down" + ids + " held=1\n"), std::string::npos);
  EXPECT_NE(heard.find("  event: a [up" + ids + " held=0\n"), std::string::npos);
  EXPECT_NE(heard.find("] capture start — IOHIDManagerOpen=-536870174 (0=ok). If 0 but no events "
                       "follow, Input Monitoring is NOT granted.\n"),
            std::string::npos);
  EXPECT_NE(heard.find("] capture re-open attempt 2 — IOHIDManagerOpen=0 (0=ok)\n"),
            std::string::npos);
  EXPECT_NE(heard.find("] capture finish — 2 event(s) captured\n"), std::string::npos);
}

} // namespace

} // namespace trellivar
