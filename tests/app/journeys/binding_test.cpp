#include "tests/app/journeys/person.h"

namespace trellivar {
namespace {

class Binding : public testing::Test {
protected:
  Binding() {
    person.start();
    person.goOnToThePad();
    person.bring("P", "Cable");
  }

  static constexpr auto untouched = "left_control+ c+ c- left_control-";
  Person person;
  Surface& window = person.window;
};

TEST_F(Binding, fromTheLibraryIsInForceAtOnceAndReplacesTheOneBefore) {
  window.expect(text(Text::helpAssignFirst));
  person.hearsFrom(1, untouched);
  person.bind(1, Text::mute);
  person.hearsFrom(1, "mute+ mute-");
  person.bind(1, Text::button3);
  window.expectChecked(choice(text(Text::mute)), false);
  window.expect(heading("Key 1 — Button 3"));
  person.hearsFrom(1, "button3+ button3-");
  person.hearsFrom(2, "left_control+ v+ v- left_control-");
  EXPECT_EQ(person.storedBindings("P"), "1 button3:mouse");
}

TEST_F(Binding, ofEachModeIsShownWithItsPill) {
  person.bind(1, Text::mute);
  window.click(choice("R"));
  window.expectChecked(choice("R"));
  window.expectNot("Mute");
  window.click(choice("P"));
  window.expect(button("1 Mute"));
}

TEST_F(Binding, thatIsComposedOnThePickerWithTheMouse) {
  person.select(2);
  window.click(button(text(Text::chooseOnKeyboard)));
  window.expect(heading(text(Text::composeShortcut)));
  EXPECT_FALSE(window.find(button("Assign to Key 2")).isEnabled);
  window.click(choice("left command"));
  window.click(choice("left shift"));
  window.click(choice("k"));
  window.expectChecked(choice("k"));
  window.click(choice("left shift"));
  window.expectChecked(choice("left shift"), false);
  window.click(choice("p"));
  window.expectChecked(choice("k"), false);
  window.expect("⌘ P");
  window.click(button("Assign to Key 2"));
  window.expectNot(text(Text::composeShortcut));
  window.expect(heading("Key 2 — ⌘ P"));
  EXPECT_EQ(person.storedBindings("P"), "2 left_command+p");
  person.hearsFrom(2, "left_command+ p+ p- left_command-");
}

TEST_F(Binding, thatIsComposedButCanceledBindsNothing) {
  person.bind(2, Text::mute);
  window.click(button(text(Text::chooseOnKeyboard)));
  window.click(choice("k"));
  window.click(button(text(Text::cancel)));
  window.expectNot(text(Text::composeShortcut));
  EXPECT_EQ(person.storedBindings("P"), "2 mute:media");
  window.click(button(text(Text::chooseOnKeyboard)));
  window.expectChecked(choice("k"), false);
  window.type(Display::escape);
  window.expectNot(text(Text::composeShortcut));
  person.hearsFrom(2, "mute+ mute-");
}

TEST_F(Binding, isComposedWithoutTheMouse) {
  person.select(3);
  window.tabTo(button(text(Text::chooseOnKeyboard)));
  window.type(Display::space);
  window.expectFocused(choice("escape"));
  window.moveTo(choice("left command"), Display::down);
  window.type(Display::space);
  window.type({Display::up, Display::up});
  window.moveTo(choice("k"), Display::right);
  window.type(Display::enter);
  window.expect("⌘ K");
  window.tabTo(button("Assign to Key 3"));
  window.type(Display::space);
  window.expect(heading("Key 3 — ⌘ K"));
  EXPECT_EQ(person.storedBindings("P"), "3 left_command+k");
  person.hearsFrom(3, "left_command+ k+ k- left_command-");
}

TEST_F(Binding, isRecordedFromTheOrdinaryKeyboard) {
  person.select(1);
  window.click(button(text(Text::recordCustom)));
  window.expect(text(Text::recordingNow));
  person.strike("left command");
  person.strike("left shift");
  person.strike("x");
  person.strike("left shift");
  person.strike("left command");
  window.expect(heading("Key 1 — ⌘ ⇧ X"));
  window.expectNot(text(Text::recordingNow));
  EXPECT_EQ(person.storedBindings("P"), "1 left_command+left_shift+x");
  person.hearsFrom(1, "left_command+ left_shift+ x+ x- left_shift- left_command-");
}

TEST_F(Binding, recordingIsCanceledWithItsButtonOnly) {
  person.bind(1, Text::mute);
  window.click(button(text(Text::recordCustom)));
  window.expect(text(Text::recordingNow));
  window.type(Display::escape);
  window.type(Display::tab);
  window.expect(text(Text::recordingNow));
  window.click(button(text(Text::cancel)));
  window.expectNot(text(Text::recordingNow));
  person.hearsFrom(1, "mute+ mute-");
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media");
}

TEST_F(Binding, ofAKeyThatHasToBeLearnedFirst) {
  person.bring("M", "Bluetooth");
  window.click(choice("M"));
  window.expect("Mode M hasn't been discovered yet");
  person.select(2);
  window.expect(text(Text::errLearnFirst));
  window.click(button("Capture Key 2"));
  window.expect(text(Text::listening));
  person.pressUntil(2, "it is learned", [this] { return !window.shows(text(Text::listening)); });
  EXPECT_EQ(person.storedSignatures(), "? 2 left_option+2");
  person.bind(2, Text::playPause);
  person.hearsFrom(2, "play_or_pause+ play_or_pause-");
  person.hearsFrom(1, "left_option+ 1+ 1- left_option-");
  EXPECT_EQ(person.storedBindings("M"), "2 play_or_pause:media");
}

TEST_F(Binding, padKeysAreAlsoPressedWithTheDigits) {
  person.bind(2, Text::mute);
  person.forget();
  person.desk.type('2');
  person.hears("mute+ mute-");
}

TEST_F(Binding, aDigitThatIsHeldIsLetGoWhenTheDeskLosesTheKeyboard) {
  person.forget();
  person.desk.press('1');
  person.waitToHear("left_control+ c+");
  window.press(Display::shift);
  window.release(Display::shift);
  person.waitToHear(untouched);
  person.desk.release('1');
}

TEST_F(Binding, theDeskTellsWhatTheApplicationMade) {
  const auto made = [this] {
    std::vector<std::string> descriptions;
    for (const Control& row : person.desk.controls())
      if (row.role == QAccessible::ListItem) descriptions.push_back(row.description);
    return descriptions;
  };
  person.bind(2, Text::mute);
  person.forget();
  person.strike("z");
  person.press(2);
  person.waitToHear("z+ z- mute+ mute-");
  const std::string ours = "Made by Trellivar";
  EXPECT_EQ(made(), (std::vector<std::string>{"", "", ours, ours}));
}

} // namespace
} // namespace trellivar
