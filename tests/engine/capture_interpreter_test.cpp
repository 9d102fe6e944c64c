#include "engine/capture_interpreter.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {
namespace {

using Phase = KeyEvent::Phase;

constexpr DeviceIdentity pad{0x1001, 0x0022};
constexpr DeviceIdentity keyboard{0x05AC, 0x0342};
constexpr DeviceIdentity sameVendor{pad.vendorId, 0x0023};
constexpr DeviceIdentity sameProduct{0x1002, pad.productId};

Key plain(std::string_view name) { return {KeyName(name), Key::Kind::keyCode}; }

/// A capture in the making; the events arrive a tenth of a second apart.
class Capture {
public:
  Capture& press(std::string_view name, DeviceIdentity device = pad,
                 Key::Kind kind = Key::Kind::keyCode) {
    return add(Phase::down, name, device, kind);
  }
  Capture& release(std::string_view name, DeviceIdentity device = pad,
                   Key::Kind kind = Key::Kind::keyCode) {
    return add(Phase::up, name, device, kind);
  }
  Capture& tap(std::string_view name, DeviceIdentity device = pad) {
    return press(name, device).release(name, device);
  }

  KeySignature signature() const {
    return CaptureInterpreter::signature(events, pad.vendorId, pad.productId);
  }
  std::optional<Output> output() const {
    return CaptureInterpreter::output(events, pad.vendorId, pad.productId);
  }

  std::vector<DeviceKeyEvent> events;

private:
  Capture& add(Phase phase, std::string_view name, DeviceIdentity device, Key::Kind kind) {
    const bool isModifier = name.starts_with("left_") || name.starts_with("right_");
    const double time = static_cast<double>(events.size()) / 10;
    events.push_back(
        {{{KeyName(name), kind}, phase, time, isModifier}, device.vendorId, device.productId});
    return *this;
  }
};

KeySignature signature(std::vector<Key> codes, bool isChord) { return {std::move(codes), isChord}; }

TEST(CaptureSignature, isEmptyWhenNothingWasPressed) {
  EXPECT_EQ(Capture().signature(), signature({}, false));
  EXPECT_EQ(Capture().release("a").release("b").signature(), signature({}, false));
}

TEST(CaptureSignature, isThePlainKeyThatThePadSent) {
  EXPECT_EQ(Capture().tap("a").signature(), signature({plain("a")}, false));
  EXPECT_EQ(Capture().press("a").signature(), signature({plain("a")}, false));
}

TEST(CaptureSignature, isAChordOfKeysThatWereHeldTogether) {
  const Capture capture = Capture()
                              .press("left_control")
                              .press("left_option")
                              .press("f")
                              .release("f")
                              .release("left_option")
                              .release("left_control");
  EXPECT_EQ(capture.signature(),
            signature({plain("left_control"), plain("left_option"), plain("f")}, true));
}

TEST(CaptureSignature, keepsTheOrderOfArrival) {
  EXPECT_EQ(Capture().press("z").press("left_option").signature(),
            signature({plain("z"), plain("left_option")}, true));
  EXPECT_EQ(Capture().press("left_option").press("z").signature(),
            signature({plain("left_option"), plain("z")}, true));
}

TEST(CaptureSignature, goesByTheOrderOfArrivalEvenAgainstTheTimes) {
  Capture capture = Capture().press("a").press("b");
  capture.events[0].event.timestamp = 5;
  EXPECT_EQ(capture.signature(), signature({plain("a"), plain("b")}, true));
}

TEST(CaptureSignature, isNoChordWhenTheKeysCameOneAfterTheOther) {
  EXPECT_EQ(Capture().tap("a").tap("b").signature(), signature({plain("a"), plain("b")}, false));
}

TEST(CaptureSignature, isAChordWhenKeysWereHeldTogetherAtAnyTime) {
  EXPECT_EQ(Capture().tap("a").press("b").press("c").release("b").release("c").tap("d").signature(),
            signature({plain("a"), plain("b"), plain("c"), plain("d")}, true));
}

TEST(CaptureSignature, namesAKeyThatCameAgainOnce) {
  EXPECT_EQ(Capture().tap("a").tap("b").tap("a").signature(),
            signature({plain("a"), plain("b")}, false));
}

TEST(CaptureSignature, takesARepeatWhileHeldForTheSamePress) {
  EXPECT_EQ(Capture().press("a").press("a").press("a").release("a").signature(),
            signature({plain("a")}, false));
  EXPECT_EQ(Capture().press("a").press("a").release("a").tap("b").signature(),
            signature({plain("a"), plain("b")}, false))
      << "one release ends it";
}

TEST(CaptureSignature, ignoresReleasesOfKeysThatAreNotHeld) {
  EXPECT_EQ(Capture().release("x").press("a").release("x").release("a").tap("b").signature(),
            signature({plain("a"), plain("b")}, false));
}

TEST(CaptureSignature, ignoresEveryOtherDevice) {
  const Capture capture = Capture()
                              .press("left_shift", keyboard)
                              .press("x", sameVendor)
                              .press("y", sameProduct)
                              .press("a")
                              .release("a", keyboard)
                              .press("b", keyboard)
                              .release("a")
                              .release("left_shift", keyboard);
  EXPECT_EQ(capture.signature(), signature({plain("a")}, false));
  EXPECT_EQ(Capture().tap("a", keyboard).signature(), signature({}, false));
}

TEST(CaptureSignature, isNotReleasedByAnotherDevice) {
  EXPECT_EQ(Capture().press("a").release("a", keyboard).press("b").signature(),
            signature({plain("a"), plain("b")}, true));
}

TEST(CaptureSignature, keepsTheKindsOfTheKeys) {
  const Key mute{KeyName("mute"), Key::Kind::consumerKeyCode};
  const Key button{KeyName("button2"), Key::Kind::pointingButton};
  const Key touch{KeyName("digitizer_66"), Key::Kind::unmappable};
  EXPECT_EQ(Capture()
                .press("mute", pad, mute.kind)
                .press("button2", pad, button.kind)
                .press("digitizer_66", pad, touch.kind)
                .signature(),
            signature({mute, button, touch}, true));
}

TEST(CaptureSignature, tellsKeysOfTheSameNameApartByTheirKind) {
  const Key mute{KeyName("mute"), Key::Kind::consumerKeyCode};
  EXPECT_EQ(Capture().press("mute").press("mute", pad, mute.kind).signature(),
            signature({plain("mute"), mute}, true));
}

TEST(CaptureOutput, isNothingWhenOnlyThePadWasPressed) {
  EXPECT_EQ(Capture().output(), std::nullopt);
  EXPECT_EQ(Capture().tap("a").press("b").output(), std::nullopt);
}

TEST(CaptureOutput, isWhatTheUsersOwnKeyboardSent) {
  EXPECT_EQ(Capture().tap("a", keyboard).tap("b", keyboard).output(),
            (Output{Output::Sequence{{plain("a"), plain("b")}}}));
  EXPECT_EQ(Capture().press("left_command", keyboard).tap("c", keyboard).output(),
            (Output{Output::Chord{{Modifier::command}, plain("c")}}));
  EXPECT_EQ(Capture().tap("right_option", keyboard).output(),
            (Output{Output::Modifiers{{Modifier::rightOption}}}));
}

TEST(CaptureOutput, leavesThePadsEventsOut) {
  EXPECT_EQ(Capture().press("left_shift").tap("a", keyboard).release("left_shift").output(),
            (Output{Output::Sequence{{plain("a")}}}));
}

TEST(CaptureOutput, takesAllOtherDevicesTogether) {
  EXPECT_EQ(Capture().press("left_shift", sameVendor).tap("a", sameProduct).output(),
            (Output{Output::Chord{{Modifier::shift}, plain("a")}}));
}

TEST(CaptureOutput, goesByTheTimesOfTheEvents) {
  Capture capture = Capture().tap("a", keyboard).tap("b", keyboard);
  for (DeviceKeyEvent& captured : capture.events)
    captured.event.timestamp *= -1;
  // Backwards: b up, b down, a up, a down.
  EXPECT_EQ(capture.output(), (Output{Output::Sequence{{plain("b"), plain("a")}}}));
}

} // namespace
} // namespace trellivar
