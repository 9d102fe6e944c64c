#include "tests/engine/darwin/tap_engine_fixture.h"

namespace trellivar {

namespace {

/// What is posted for one output, bound to "a".
class PostedOutputTest : public TapEngineTest {
protected:
  std::vector<InputEvent> posted(const Output& output) {
    computer.engine->apply(customSet({{{"a"}, output}}));
    computer.desk.events().clearReceived();
    computer.tap(pad, "a");
    std::vector<InputEvent> events;
    for (const desk::Received& received : computer.desk.events().received())
      events.push_back(received.event);
    return events;
  }
  static constexpr std::uint64_t commandFlags = 0x100008;
  static constexpr std::uint64_t shiftFlags = 0x20002;
};

TEST_F(PostedOutputTest, aChordCarriesTheFlagsOfTheModifiersItHolds) {
  const auto events = posted(chordOutput({Modifier::command, Modifier::shift}, "z"));
  ASSERT_EQ(events.size(), 6U);
  EXPECT_EQ(events[0].type, InputEvent::flagsChanged);
  EXPECT_EQ(events[0].flags, commandFlags);
  EXPECT_EQ(events[1].flags, commandFlags | shiftFlags);
  EXPECT_EQ(events[2].type, InputEvent::keyDown);
  EXPECT_EQ(events[2].flags, commandFlags | shiftFlags);
  EXPECT_EQ(events[3].type, InputEvent::keyUp);
  EXPECT_EQ(events[3].flags, commandFlags | shiftFlags);
  EXPECT_EQ(events[4].type, InputEvent::flagsChanged);
  EXPECT_EQ(events[4].flags, commandFlags);
  EXPECT_EQ(events[5].flags, 0U);
  for (const InputEvent& event : events)
    EXPECT_EQ(event.field(InputEvent::sourceUserData), 0x54524C56);
}

TEST_F(PostedOutputTest, bothSidesOfAModifierShareTheFlagUntilTheLastIsUp) {
  const auto events = posted({Output::Modifiers{{Modifier::shift, Modifier::rightShift}}});
  ASSERT_EQ(events.size(), 4U);
  EXPECT_EQ(events[0].flags, 0x20002U);
  EXPECT_EQ(events[1].flags, 0x20006U);
  EXPECT_EQ(events[2].flags, 0x20002U) << "the right one is up";
  EXPECT_EQ(events[3].flags, 0U);
}

TEST_F(PostedOutputTest, arrowAndFunctionKeysKeepTheFlagsOfTheSystem) {
  const auto arrow = posted(chordOutput({Modifier::command}, "left_arrow"));
  ASSERT_EQ(arrow.size(), 4U);
  EXPECT_EQ(arrow[1].flags, commandFlags | InputEvent::numericPad | InputEvent::secondaryFn);
  const auto function = posted(keyOutput("f5"));
  ASSERT_EQ(function.size(), 2U);
  EXPECT_EQ(function[0].flags, InputEvent::secondaryFn);
}

TEST_F(PostedOutputTest, aMediaKeyPostsItsDownAndItsUpForm) {
  const auto events =
      posted({Output::Chord{{}, {KeyName("play_or_pause"), Key::Kind::consumerKeyCode}}});
  ASSERT_EQ(events.size(), 2U);
  for (const InputEvent& event : events) {
    EXPECT_EQ(event.type, InputEvent::systemDefined);
    EXPECT_EQ(event.subtype, 8);
    EXPECT_EQ(event.field(InputEvent::sourceUserData), 0x54524C56);
  }
  EXPECT_EQ(events[0].data1, 0x100A00);
  EXPECT_EQ(events[1].data1, 0x100B00);
}

TEST_F(PostedOutputTest, aMouseButtonIsPressedWhereThePointerIs) {
  computer.platform.setPointer(321, 123);
  const auto events = posted({Output::Chord{{}, {KeyName("button4"), Key::Kind::pointingButton}}});
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].type, InputEvent::otherMouseDown);
  EXPECT_EQ(events[1].type, InputEvent::otherMouseUp);
  for (const InputEvent& event : events) {
    EXPECT_EQ(event.field(InputEvent::buttonNumber), 3);
    EXPECT_EQ(event.field(InputEvent::clickState), 1);
    EXPECT_EQ(event.x, 321);
    EXPECT_EQ(event.y, 123);
  }
}

TEST_F(PostedOutputTest, mediaKeysAndButtonsCarryTheModifiersOfTheirOutputToo) {
  for (const Key& key : {Key{KeyName("mute"), Key::Kind::consumerKeyCode},
                         Key{KeyName("button3"), Key::Kind::pointingButton}}) {
    const auto events = posted({Output::Chord{{Modifier::option}, key}});
    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[1].flags & 0x1F20FF, 0x80020U) << key.keyCode.text();
    EXPECT_EQ(events[2].flags & 0x1F20FF, 0x80020U) << key.keyCode.text();
  }
}

TEST_F(PostedOutputTest, nothingThatIsHeldElsewhereGetsIntoAnOutput) {
  computer.desk.events().setHardwareFlags(0x20002 | InputEvent::secondaryFn); // shift and fn
  for (const Key& key :
       {Key{KeyName("c"), Key::Kind::keyCode}, Key{KeyName("mute"), Key::Kind::consumerKeyCode},
        Key{KeyName("button3"), Key::Kind::pointingButton}}) {
    for (const InputEvent& event : posted({Output::Chord{{}, key}}))
      EXPECT_EQ(event.flags & (0x1F20FF | InputEvent::secondaryFn), 0U) << key.keyCode.text();
    computer.desk.events().setHardwareFlags(0x20002 | InputEvent::secondaryFn);
  }
}

TEST_F(PostedOutputTest, aKeyThatCannotBePostedIsLeftOut) {
  EXPECT_EQ(posted(keyOutput("fast_forward")).size(), 0U);
  EXPECT_EQ(
      posted({Output::Sequence{{plainKey("h"), plainKey("fast_forward"), plainKey("i")}}}).size(),
      4U);
}

} // namespace

} // namespace trellivar
