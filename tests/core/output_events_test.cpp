#include "core/output_events.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace trellivar {
namespace {

using Steps = std::vector<std::string>;

/// "down left_command", "up c", … after checking what all expanded events have in common.
Steps steps(const Output& output) {
  Steps result;
  for (const TapEvent& event : OutputEvents::events(output)) {
    EXPECT_EQ(event.senderId, 0);
    switch (event.kind) {
    case TapEvent::Kind::keyDown:
      result.push_back("down " + event.name.text());
      break;
    case TapEvent::Kind::keyUp:
      result.push_back("up " + event.name.text());
      break;
    default:
      ADD_FAILURE() << "expanded to the kind " << rawValue(event.kind);
    }
  }
  return result;
}

Key key(std::string_view name, Key::Kind kind = Key::Kind::keyCode) {
  return {KeyName(name), kind};
}

TEST(OutputEvents, pressModifiersInOrderAndReleaseThemInReverse) {
  const Output output{Output::Chord{{Modifier::command, Modifier::shift}, key("c")}};
  EXPECT_EQ(steps(output), (Steps{"down left_command", "down left_shift", "down c", "up c",
                                  "up left_shift", "up left_command"}));
}

TEST(OutputEvents, keepTheStoredOrderOfModifiers) {
  const Output output{Output::Chord{{Modifier::rightOption, Modifier::command}, key("c")}};
  EXPECT_EQ(steps(output), (Steps{"down right_option", "down left_command", "down c", "up c",
                                  "up left_command", "up right_option"}));
}

TEST(OutputEvents, tapAChordWithoutModifiersAsOneKey) {
  EXPECT_EQ(steps({Output::Chord{{}, key("f5")}}), (Steps{"down f5", "up f5"}));
}

TEST(OutputEvents, loseTheKindOfAMediaKey) {
  const Output output{Output::Chord{{Modifier::control}, key("mute", Key::Kind::consumerKeyCode)}};
  EXPECT_EQ(steps(output), (Steps{"down left_control", "down mute", "up mute", "up left_control"}));
}

TEST(OutputEvents, loseEveryKindInASequenceToo) {
  const Output output{Output::Sequence{{key("a"), key("rewind", Key::Kind::consumerKeyCode),
                                        key("button2", Key::Kind::pointingButton),
                                        key("strange", Key::Kind::unmappable)}}};
  EXPECT_EQ(steps(output), (Steps{"down a", "up a", "down rewind", "up rewind", "down button2",
                                  "up button2", "down strange", "up strange"}));
}

TEST(OutputEvents, tapTheKeysOfASequenceInTurn) {
  const Output output{Output::Sequence{{key("h"), key("i"), key("h")}}};
  EXPECT_EQ(steps(output), (Steps{"down h", "up h", "down i", "up i", "down h", "up h"}));
}

TEST(OutputEvents, areNoneForAnEmptySequence) { EXPECT_EQ(steps({Output::Sequence{}}), Steps{}); }

TEST(OutputEvents, pressModifiersAloneAndReleaseThemInReverse) {
  const Output output{
      Output::Modifiers{{Modifier::shift, Modifier::rightCommand, Modifier::option}}};
  EXPECT_EQ(steps(output), (Steps{"down left_shift", "down right_command", "down left_option",
                                  "up left_option", "up right_command", "up left_shift"}));
}

TEST(OutputEvents, areNoneForNoModifiers) { EXPECT_EQ(steps({Output::Modifiers{}}), Steps{}); }

TEST(OutputEvents, nameEachModifierByItsKey) {
  for (const Modifier modifier : Modifier::allCases) {
    const std::string name(modifier.rawValue());
    EXPECT_EQ(steps({Output::Modifiers{{modifier}}}), (Steps{"down " + name, "up " + name}));
  }
}

RC_GTEST_PROP(OutputEvents, leaveNothingHeld, (const Output& output)) {
  std::vector<KeyName> held;
  for (const TapEvent& event : OutputEvents::events(output)) {
    if (isDown(event.kind)) {
      held.push_back(event.name);
      continue;
    }
    RC_ASSERT(!held.empty());
    RC_ASSERT(held.back() == event.name);
    held.pop_back();
  }
  RC_ASSERT(held.empty());
}

} // namespace
} // namespace trellivar
