#include "core/cg_keycode_map.h"
#include "tests/viewmodels/language_change.h"
#include "viewmodels/output_label.h"
#include "viewmodels/output_library.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trellivar {
namespace {

Key key(std::string_view name, Key::Kind kind = Key::Kind::keyCode) {
  return {KeyName(name), kind};
}
Output chord(std::vector<Modifier> modifiers, const Key& with) {
  return {Output::Chord{std::move(modifiers), with}};
}

TEST(OutputLabel, showsTheSymbolsOfTheKeyboardInTheOrderOfTheChord) {
  EXPECT_EQ(outputLabel(chord({Modifier::shift, Modifier::command}, key("k"))), "⇧ ⌘ K");
  EXPECT_EQ(outputLabel(chord({Modifier::rightOption}, key("left_arrow"))), "⌥R ←");
  EXPECT_EQ(outputLabel(chord({}, key("return_or_enter"))), "⏎");
}

TEST(OutputLabel, showsTheKeysOfASequenceOneAfterAnother) {
  EXPECT_EQ(outputLabel({Output::Sequence{{key("h"), key("spacebar"), key("1")}}}), "H Space 1");
  EXPECT_EQ(outputLabel({Output::Sequence{}}), "");
}

TEST(OutputLabel, showsModifiersAlone) {
  EXPECT_EQ(outputLabel({Output::Modifiers{{Modifier::control, Modifier::rightShift}}}), "⌃ ⇧R");
}

TEST(OutputLabel, namesMediaKeysAndButtonsInTheLanguageOfTheMoment) {
  const Output mute = chord({}, key("mute", Key::Kind::consumerKeyCode));
  EXPECT_EQ(outputLabel(mute), "Mute");
  const LanguageChange chinese(AppLanguage::zhHans);
  EXPECT_EQ(outputLabel(mute), "静音");
}

TEST(OutputLibrary, offersMediaKeysAndThenButtons) {
  std::vector<std::string> labels;
  for (const Output& output : OutputLibrary::outputs())
    labels.push_back(outputLabel(output));
  EXPECT_EQ(labels, (std::vector<std::string>{"Volume Up", "Volume Down", "Mute", "Play / Pause",
                                              "Button 1", "Button 2", "Button 3"}));
}

TEST(OutputLibrary, offersOnlyWhatTheEngineCanPost) {
  for (const Output& output : OutputLibrary::outputs()) {
    const auto* single = std::get_if<Output::Chord>(&output.value);
    ASSERT_TRUE(single && single->modifiers.empty());
    const std::string& name = single->key.keyCode.text();
    EXPECT_TRUE(single->key.kind == Key::Kind::pointingButton
                    ? CGKeycodeMap::buttonNumber(name).has_value()
                    : CGKeycodeMap::auxKey(name).has_value())
        << name;
  }
}

} // namespace
} // namespace trellivar
