#include "files/durable_file.h"
#include "tests/app/journeys/person.h"

#include <fstream>

namespace trellivar {
namespace {

TEST(Restart, findsEverythingAgain) {
  Person person;
  Surface& window = person.window;
  person.start();
  person.goOnToThePad();
  person.bring("M", "Bluetooth");
  window.click(choice("M"));
  person.select(1);
  window.click(button("Capture Key 1"));
  person.pressUntil(1, "it is learned", [&] { return window.shows(text(Text::volumeUp)); });
  person.bind(1, Text::volumeUp);
  window.doubleClick(button("Volume Up"));
  window.expectFocused(field("Name"));
  window.type("Louder");
  window.type(Display::enter);
  window.expect(heading("Key 1 — Louder"));
  window.click(button("SETTINGS"));
  window.click(choice("Dark"));
  window.click(choice("简体中文"));
  window.expect(heading("设置"));

  person.restart();
  waitFor("the window is dark", [&] { return window.isDark(); });
  person.bring("M", "Bluetooth");
  person.hearsFrom(1, "volume_increment+ volume_increment-");
  window.click(choice("M"));
  window.expect(button("1 Louder"));
  person.select(1);
  window.expect(heading("按键 1 — Louder"));
  window.click(button("设置"));
  window.expectChecked(choice("简体中文"));
  window.expectChecked(choice("深色"));
  EXPECT_EQ(person.storedBindings("M"), "1 volume_increment:media = Louder");
}

TEST(Restart, profilesThatCannotBeReadAreKeptBeside) {
  Person person;
  std::filesystem::create_directory(person.dataFolder());
  constexpr auto broken = "[{\"id\": 1";
  std::ofstream(person.dataFolder() / "profiles.json") << broken;
  person.start();
  person.goOnToThePad();
  person.window.expect(note("A file could not be read or written"));
  person.window.click(button("Close"));
  EXPECT_EQ(readFile(person.dataFolder() / "profiles.json.unreadable"), broken);

  person.bring("P", "Cable");
  person.bind(1, Text::mute);
  person.restart();
  person.bring("P", "Cable");
  person.hearsFrom(1, "mute+ mute-");
  EXPECT_EQ(readFile(person.dataFolder() / "profiles.json.unreadable"), broken);
}

TEST(Restart, learnedKeysThatCannotBeReadAreToldOfAndKept) {
  Person person;
  std::filesystem::create_directory(person.dataFolder());
  constexpr auto broken = "{\"";
  std::ofstream(person.dataFolder() / "signatures.json") << broken;
  person.start();
  person.goOnToThePad();
  person.window.expect(note("A file could not be read or written"));
  EXPECT_EQ(readFile(person.dataFolder() / "signatures.json"), broken);
}

} // namespace
} // namespace trellivar
