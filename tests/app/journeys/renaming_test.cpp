#include "tests/app/journeys/person.h"

namespace trellivar {
namespace {

class Renaming : public testing::Test {
protected:
  Renaming() {
    person.start();
    person.goOnToThePad();
    person.bring("P", "Cable");
    person.bind(1, Text::mute);
  }

  /// The field that a double click on a label opens.
  void edit(std::string_view label) {
    person.window.doubleClick(button(label));
    person.window.expectFocused(name);
  }
  void finish(Display::Key with) {
    person.window.type(with);
    waitFor("the field is closed", [this] { return !person.window.shows(name); });
  }

  const Wanted name = field("Name");
  Person person;
};

TEST_F(Renaming, enterKeepsTheName) {
  edit("Mute");
  person.window.type("Quiet!");
  finish(Display::enter);
  person.window.expect(button("1 Quiet!"));
  person.window.expect(heading("Key 1 — Quiet!"));
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media = Quiet!");
  person.hearsFrom(1, "mute+ mute-");
}

TEST_F(Renaming, escapeKeepsTheOldOne) {
  edit("Mute");
  person.window.type("Quiet");
  finish(Display::escape);
  person.window.expect(heading("Key 1 — Mute"));
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media");
}

TEST_F(Renaming, emptyClearsTheName) {
  edit("Mute");
  person.window.type("Quiet");
  finish(Display::enter);
  edit("Quiet");
  EXPECT_EQ(person.window.find(name).value, "Quiet");
  person.window.type(Display::deleteKey); // all of it is selected
  finish(Display::enter);
  person.window.expect(heading("Key 1 — Mute"));
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media");
}

} // namespace
} // namespace trellivar
