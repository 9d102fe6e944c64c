#include "tests/app/journeys/person.h"

namespace trellivar {
namespace {

class Writing : public testing::Test {
protected:
  Writing() {
    person.start();
    person.goOnToThePad();
  }

  void compose(int key, std::string_view named) {
    person.select(key);
    window.click(button(text(Text::chooseOnKeyboard)));
    window.click(choice(named));
    window.click(button(L10n::t(Text::assignToKey, key)));
    window.expectNot(text(Text::composeShortcut));
  }
  void write() { window.click(button(text(Text::writeToPad))); }

  Person person;
  Surface& window = person.window;
};

TEST_F(Writing, whatIsWrittenComesFromThePadItself) {
  person.bring("P", "Cable");
  compose(1, "w");
  compose(2, "f1"); // the firmware has no such key
  write();
  window.expect(text(Text::writing));
  window.expect("Written P, M, R (firmware 1.0.7)");
  window.expect("P — keys 2 skipped (no firmware equivalent)");
  window.expect("M ✓");
  window.expect("R ✓");

  person.bring("P", "Bluetooth");
  person.permit("Accessibility", false); // so that nothing is remapped
  person.hearsFrom(1, "w+ w-");
  person.hearsFrom(2, "volume_decrement+ volume_decrement-");
}

TEST_F(Writing, aMissingPadIsAskedForUntilItIsThere) {
  compose(1, "w");
  write();
  window.expect(alert(text(Text::needPad)));
  person.bring("P", "Cable");
  window.expectNot(text(Text::needPad));
}

TEST_F(Writing, nothingBoundIsNothingToWrite) {
  person.bring("P", "Cable");
  write();
  window.expect(alert(text(Text::errNothingToWrite)));
}

} // namespace
} // namespace trellivar
