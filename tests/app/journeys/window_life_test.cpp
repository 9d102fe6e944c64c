#include "tests/app/journeys/person.h"
#include "tests/app/journeys/running_application.h"

#include <algorithm>

namespace trellivar {
namespace {

class WindowLife : public testing::Test {
protected:
  WindowLife() {
    person.start();
    person.goOnToThePad();
    person.bring("P", "Cable");
    person.bind(1, Text::mute);
  }

  Person person;
  Surface& window = person.window;
};

TEST_F(WindowLife, remappingGoesOnWhileTheWindowIsClosed) {
  window.close();
  person.hearsFrom(1, "mute+ mute-");
  person.chooseFromMenu(text(Text::menuOpen));
  window.arrange();
  window.expect(heading("Key 1 — Mute"));
  person.bind(1, Text::playPause);
  person.hearsFrom(1, "play_or_pause+ play_or_pause-");
}

TEST_F(WindowLife, aPermissionThatChangesWhileTheWindowIsClosedCountsOnceItIsOpen) {
  window.close();
  person.permit("Accessibility", false);
  person.hearsFrom(1, "left_control+ c+ c- left_control-");
  person.permit("Accessibility", true);
  person.chooseFromMenu(text(Text::menuOpen));
  window.arrange();
  person.pressUntil(1, "it is remapped again",
                    [this] { return person.heard().ends_with("mute+ mute-"); });
  person.permit("Accessibility", false);
  window.expect(note(text(Text::step1Title)));
}

TEST_F(WindowLife, onlyTheTapIsLookedAtWhileTheWindowIsClosed) {
  person.permit("Accessibility", false);
  window.expect(note(text(Text::step1Title)));
  window.close();
  person.permit("Accessibility", true);
  person.pressUntil(1, "the tap is there again",
                    [this] { return person.heard().ends_with("mute+ mute-"); });
  onMainThread([] {
    EXPECT_EQ(std::ranges::count(textsOfTheClosed("Trellivar"), text(Text::step1Title)), 1);
  });
  person.chooseFromMenu(text(Text::menuOpen));
  window.arrange();
  window.expectNot(text(Text::step1Title));
}

TEST_F(WindowLife, theMenuQuits) {
  person.chooseFromMenu(text(Text::menuQuit));
  EXPECT_EQ(person.waitForItsEnd(), 0);
  EXPECT_EQ(person.storedBindings("P"), "1 mute:media");
}

TEST_F(WindowLife, theMenuQuitsAlsoWithoutAWindow) {
  window.close();
  person.chooseFromMenu(text(Text::menuQuit));
  EXPECT_EQ(person.waitForItsEnd(), 0);
}

} // namespace
} // namespace trellivar
