#include "tests/app/journeys/person.h"

#include <map>

namespace trellivar {
namespace {

TEST(Discovery, teachesAModeThatIsInForceOnceItIsSaved) {
  Person person;
  Surface& window = person.window;
  person.start();
  person.goOnToThePad();
  window.click(choice("R"));
  person.bind(1, Text::mute);
  window.click(button(text(Text::discoverThisMode)));
  window.expect(heading("Discover Mode R"));
  window.expect("Flip the switch to R");
  person.turnTo("R");
  person.connect("Bluetooth");
  window.click(button(text(Text::checkConnection)));
  const std::map<int, std::string> sent{{1, "⏎"}, {2, "⇥"}, {3, "esc"}};
  for (const int key : {1, 2, 3}) {
    window.expect(L10n::t(Text::pressKeyTitle, key));
    person.pressUntil(key, "it is captured", [&] {
      return window.shows("✓ " + L10n::t(Text::keyNNamed, key, sent.at(key)));
    });
  }
  window.click(button("Save Mode R"));
  window.expect("Mode R discovered.");
  window.click(button(text(Text::done)));
  window.expectNot("Discover Mode R");
  window.expectNot("Mode R hasn't been discovered yet");

  EXPECT_EQ(person.storedSignatures(), "R 1 return_or_enter, R 2 tab, R 3 escape");
  person.hearsFrom(1, "mute+ mute-");
  person.hearsFrom(2, "tab+ tab-");
}

TEST(Discovery, thatIsClosedEarlyTeachesNothing) {
  Person person;
  person.start();
  person.goOnToThePad();
  person.bring("R", "Bluetooth");
  person.window.click(choice("R"));
  person.window.click(button(text(Text::discoverThisMode)));
  person.window.click(button(text(Text::checkConnection)));
  person.window.expect("Press Key 1 on your Orlo3");
  person.pressUntil(1, "the next is asked for",
                    [&] { return person.window.shows("Press Key 2 on your Orlo3"); });
  person.window.type(Display::escape); // which the pad itself may have typed
  person.window.expect("Press Key 2 on your Orlo3");
  person.window.click(button(text(Text::close)));
  person.window.expectNot("Discover Mode R");
  person.window.expect("Mode R hasn't been discovered yet");
  EXPECT_EQ(person.storedSignatures(), "");
  person.hearsFrom(1, "return_or_enter+ return_or_enter-");
}

} // namespace
} // namespace trellivar
