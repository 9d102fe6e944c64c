#include "tests/app/journeys/person.h"

namespace trellivar {
namespace {

class Unplugging : public testing::Test {
protected:
  Unplugging() {
    person.start();
    person.goOnToThePad();
    person.bring("P", "Cable");
    person.select(1);
    window.click(button(text(Text::chooseOnKeyboard)));
    window.click(choice("left command"));
    window.click(choice("v"));
    window.click(button("Assign to Key 1"));
    window.expectNot(text(Text::composeShortcut));
    person.forget();
  }

  static constexpr auto output = "left_command+ v+ v- left_command-";
  Person person;
  Surface& window = person.window;
};

TEST_F(Unplugging, whileAKeyIsHeldLeavesNothingDown) {
  person.desk.press('2'); // which is not bound
  person.waitToHear("left_control+ v+");
  person.connect("Away");
  window.expect(text(Text::chipNone));
  window.expect(text(Text::stageHintOffline));
  person.waitToHear("left_control+ v+ left_control- v-");
  person.desk.release('2');
  person.hears("left_control+ v+ left_control- v-");

  person.connect("Cable");
  window.expect(text(Text::chipUSBReady));
  person.hearsFrom(1, output);
  person.hearsFrom(2, "left_control+ v+ v- left_control-");
}

TEST_F(Unplugging, theDevicePopoverTellsAndLooksAgain) {
  window.click(Wanted{.name = text(Text::chipUSBReady)});
  window.expect(text(Text::popUSB));
  person.connect("Away");
  window.expect(text(Text::popNone));
  window.click(button(text(Text::refresh)));
  window.type(Display::escape);
  window.expectNot(text(Text::popNone));
}

TEST_F(Unplugging, aPermissionThatIsTakenAwayAndGivenAgainNeedsNoRestart) {
  person.hearsFrom(1, output);
  person.permit("Accessibility", false);
  person.hearsFrom(1, "left_control+ c+ c- left_control-");
  window.expect(text(Text::step1Title));
  window.expect(button(text(Text::openAccessibility)));
  person.permit("Accessibility", true);
  person.pressUntil(1, "it is remapped again", [this] { return person.heard().ends_with(output); });
  person.hearsFrom(1, output);
  window.expectNot(text(Text::step1Title));
}

} // namespace
} // namespace trellivar
