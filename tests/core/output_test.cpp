#include "core/output.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>

namespace trellivar {
namespace {

const Key c{KeyName("c")};
const Key v{KeyName("v")};

TEST(Output, hasItsThreeFormsInStoredOrder) {
  EXPECT_EQ((Output{Output::Chord{}}.value.index()), 0U);
  EXPECT_EQ((Output{Output::Sequence{}}.value.index()), 1U);
  EXPECT_EQ((Output{Output::Modifiers{}}.value.index()), 2U);
  EXPECT_EQ((std::variant_size_v<decltype(Output::value)>), 3U);
}

TEST(Output, differsByTheOrderOfModifiers) {
  const Output output{Output::Chord{{Modifier::shift, Modifier::command}, c}};
  EXPECT_EQ(output, (Output{Output::Chord{{Modifier::shift, Modifier::command}, c}}));
  EXPECT_NE(output, (Output{Output::Chord{{Modifier::command, Modifier::shift}, c}}));
  EXPECT_NE((Output{Output::Modifiers{{Modifier::shift, Modifier::command}}}),
            (Output{Output::Modifiers{{Modifier::command, Modifier::shift}}}));
}

TEST(Output, differsByEveryPartOfAChord) {
  const Output output{Output::Chord{{Modifier::shift}, c}};
  EXPECT_NE(output, (Output{Output::Chord{{Modifier::shift}, v}}));
  EXPECT_NE(output, (Output{Output::Chord{{Modifier::rightShift}, c}}));
  EXPECT_NE(output, (Output{Output::Chord{{}, c}}));
  EXPECT_NE(output, (Output{Output::Chord{{Modifier::shift}, {c.keyCode, Key::Kind::unmappable}}}));
}

TEST(Output, differsByTheOrderOfKeys) {
  EXPECT_EQ((Output{Output::Sequence{{c, v}}}), (Output{Output::Sequence{{c, v}}}));
  EXPECT_NE((Output{Output::Sequence{{c, v}}}), (Output{Output::Sequence{{v, c}}}));
  EXPECT_NE((Output{Output::Sequence{{c, v}}}), (Output{Output::Sequence{{c}}}));
}

TEST(Output, differsByItsFormEvenIfNothingIsInIt) {
  const Output chord{Output::Chord{}};
  const Output sequence{Output::Sequence{}};
  const Output modifiers{Output::Modifiers{}};
  EXPECT_NE(chord, sequence);
  EXPECT_NE(sequence, modifiers);
  EXPECT_NE(modifiers, chord);
}

} // namespace
} // namespace trellivar
