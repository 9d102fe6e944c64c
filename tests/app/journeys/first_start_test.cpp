#include "tests/app/journeys/person.h"

namespace trellivar {
namespace {

constexpr auto untouched = "left_control+ c+ c- left_control-";

TEST(FirstStart, leadsToTheFirstRemappedKey) {
  Person person;
  person.start();
  person.permit("Accessibility", false);
  person.permit("Input Monitoring", false);
  person.connect("Cable");
  person.window.expect(heading(text(Text::onboardTitle)));
  person.window.expect(button(text(Text::openAccessibility)));
  person.hearsFrom(1, untouched);

  person.permit("Accessibility", true);
  person.window.expect(button(text(Text::openInputMonitoring)));
  EXPECT_FALSE(person.window.find(button(text(Text::continueButton))).isEnabled);
  person.permit("Input Monitoring", true);
  person.window.expectNot(text(Text::openInputMonitoring));
  person.goOnToThePad();
  person.window.expect(text(Text::chipUSBReady));
  person.hearsFrom(1, untouched);

  person.bind(1, Text::volumeUp);
  person.window.expect(heading("Key 1 — Volume Up"));
  person.hearsFrom(1, "volume_increment+ volume_increment-");
  EXPECT_EQ(person.storedBindings("P"), "1 volume_increment:media");
}

} // namespace
} // namespace trellivar
