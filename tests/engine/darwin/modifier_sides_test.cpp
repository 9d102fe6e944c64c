#include "tests/engine/darwin/tap_engine_fixture.h"

namespace trellivar {

namespace {

using ModifierSidesTest = TapEngineTest;

/// A written pad sends right-side modifiers where its bindings mean the left.
class NormalizationTest : public TapEngineTest {
protected:
  NormalizationTest() {
    MappingSet set = customSet({{{}, chordOutput({Modifier::command}, "c")}});
    set.portable = true;
    computer.engine->apply(set);
  }
};

TEST_F(NormalizationTest, aRightModifierArrivesAsTheLeftOne) {
  computer.down(pad, "right_command");
  computer.up(pad, "right_command");
  const auto& received = computer.desk.events().received();
  ASSERT_EQ(received.size(), 2U);
  EXPECT_EQ(received[0].event.field(InputEvent::keyCode), 55);
  EXPECT_EQ(received[0].event.flags & ~InputEvent::nonCoalesced, 0x100008U);
  EXPECT_EQ(received[1].event.field(InputEvent::keyCode), 55);
  EXPECT_EQ(received[1].event.flags & ~InputEvent::nonCoalesced, 0U);
  EXPECT_EQ(heard(), "left_command+ left_command-");
}

TEST_F(NormalizationTest, otherModifiersKeepTheirSide) {
  computer.tap(pad, "right_shift");
  EXPECT_EQ(heard(), "right_shift+ right_shift-");
}

TEST_F(NormalizationTest, aModifierHeldElsewhereKeepsItsFlag) {
  computer.down(keyboard, "left_shift");
  heard();
  computer.tap(pad, "right_command");
  EXPECT_EQ(heard(), "left_command+(left_shift) left_command-(left_shift)");
}

TEST_F(ModifierSidesTest, twoSidesHeldTogetherAreToldApart) {
  computer.engine->apply(customSet({{{"right_shift"}, keyOutput("v")}}));
  computer.down(pad, "left_shift");
  computer.down(pad, "right_shift");
  EXPECT_EQ(heard(), "left_shift+ *v+ *v-");
  computer.up(pad, "right_shift");
  computer.up(pad, "left_shift");
  EXPECT_EQ(heard(), "left_shift-") << "the release of the bound key is not taken for a press";
  computer.tap(pad, "right_shift");
  EXPECT_EQ(heard(), "*v+ *v-");
}

TEST_F(ModifierSidesTest, aModifierThatABoundKeyHoldsTooComesUpWithTheKeyboards) {
  computer.engine->apply(customSet({{{"left_control"}, keyOutput("v")}}));
  computer.down(keyboard, "left_control");
  computer.down(pad, "left_control");
  heard();
  computer.up(keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control-") << "the bound key's own release will not be heard";
  computer.up(pad, "left_control");
  EXPECT_EQ(heard(), "");
}

TEST_F(ModifierSidesTest, aModifierStaysDownForAsLongAsAKeyboardHoldsIt) {
  computer.engine->apply(customSet({{{"left_control"}, keyOutput("v")}}));
  const auto second = computer.attach({0x1234, 0x0002});
  computer.down(keyboard, "left_control");
  computer.down(second, "left_control");
  computer.down(pad, "left_control");
  heard();
  computer.up(keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control+") << "the second keyboard holds it";
  computer.up(second, "left_control");
  EXPECT_EQ(heard(), "left_control-");
  computer.up(pad, "left_control");
}

TEST_F(ModifierSidesTest, aModifierThatIsUpIsHeldByNoKeyboard) {
  computer.engine->apply(customSet({{{"left_control"}, keyOutput("v")}}));
  const auto second = computer.attach({0x1234, 0x0002});
  computer.pass(Computer::debounce.count());
  computer.down(second, "left_control");
  computer.desk.detach(second);
  computer.tap(keyboard, "left_control");
  computer.down(keyboard, "left_control");
  computer.down(pad, "left_control");
  heard();
  computer.up(keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control-");
  computer.up(pad, "left_control");
}

TEST_F(ModifierSidesTest, aModifierStaysDownForAsLongAsAnUnboundKeyHoldsIt) {
  computer.engine->apply(customSet({{{"f"}, keyOutput("v")}}));
  computer.down(keyboard, "left_control");
  computer.down(pad, "left_control");
  heard();
  computer.up(keyboard, "left_control");
  EXPECT_EQ(heard(), "left_control+") << "applications know that the pad holds it";
  computer.up(pad, "left_control");
  EXPECT_EQ(heard(), "left_control-");
}

TEST_F(ModifierSidesTest, aModifierHeldOnTheKeyboardTooIsStillReleasedOnThePad) {
  computer.down(keyboard, "left_control");
  for (int i = 0; i < 3; ++i) {
    heard();
    computer.down(pad, "left_control");
    computer.down(pad, "f");
    computer.up(pad, "f");
    computer.up(pad, "left_control"); // the flags say that left control is down
    computer.pass(1);
    EXPECT_EQ(heard(), "*v+ *v-");
  }
}

TEST_F(NormalizationTest, aModifierHeldOnTheKeyboardTooIsStillReleasedOnThePad) {
  computer.down(keyboard, "right_command");
  heard();
  computer.tap(pad, "right_command");
  EXPECT_EQ(heard(), "left_command+ left_command-(right_command)");
}

TEST_F(ModifierSidesTest, aModifierEventWithoutSidesIsReadFromTheCommonFlag) {
  constexpr std::int64_t rightShift = 60;
  computer.engine->apply(customSet({{{"right_shift"}, keyOutput("v")}}));
  send(InputEvent::flagsChanged, rightShift, 0x20000);
  EXPECT_EQ(heard(), "*v+ *v-");
  send(InputEvent::flagsChanged, rightShift, 0);
  send(InputEvent::flagsChanged, rightShift, 0x20000);
  EXPECT_EQ(heard(), "*v+ *v-") << "the release in between was seen";
}

} // namespace

} // namespace trellivar
