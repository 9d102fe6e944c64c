#include "files/durable_file.h"
#include "tests/app/journeys/person.h"

#include <algorithm>
#include <set>
#include <utility>

namespace trellivar {
namespace {

class Settings : public testing::Test {
protected:
  Settings() {
    person.start();
    person.goOnToThePad();
    person.bring("P", "Cable");
    person.bind(1, Text::mute);
  }

  void open() {
    window.click(button(text(Text::settingsLabel)));
    window.expect(text(Text::appearanceSystem));
  }
  void close() {
    window.type(Display::escape);
    window.expectNot(text(Text::appearanceSystem));
  }
  /// What stands in the window once it rests, less what is the same in both languages.
  std::set<std::string> words() const {
    std::set<std::string> different;
    waitFor("the texts rest", [&] {
      const auto all = window.texts();
      std::set<std::string> now(all.begin(), all.end());
      for (const char* same : {"P", "M", "R", "1", "2", "3", "English", "简体中文"})
        now.erase(same);
      return std::exchange(different, now) == now;
    });
    return different;
  }

  Person person;
  Surface& window = person.window;
};

TEST_F(Settings, theLanguageChangesEveryTextAtOnce) {
  open();
  const auto english = words();
  window.click(choice("简体中文"));
  window.expect("设置");
  const auto chinese = words();
  EXPECT_EQ(chinese.size(), english.size());
  std::vector<std::string> unchanged;
  std::ranges::set_intersection(english, chinese, std::back_inserter(unchanged));
  EXPECT_EQ(unchanged, std::vector<std::string>{});
  for (const Text shown : {Text::chipUSBReady, Text::writeToPad, Text::mute, Text::close})
    EXPECT_TRUE(chinese.contains(std::string(L10n::text(shown, AppLanguage::zhHans))));
  window.expect(heading("按键 1 — 静音"));
  window.expect(button("写入键盘"));

  window.click(choice("English"));
  window.expect("Language");
  EXPECT_EQ(words(), english);
}

TEST_F(Settings, theAppearanceChangesAtOnce) {
  open();
  window.click(choice(text(Text::appearanceDark)));
  waitFor("the window is dark", [this] { return window.isDark(); });
  window.click(choice(text(Text::appearanceLight)));
  waitFor("the window is light", [this] { return !window.isDark(); });
  close();
}

TEST_F(Settings, startAtLoginIsSwitchedOnOnceAndStaysOffAfterwards) {
  const Wanted control = toggle(text(Text::startAtLogin));
  const auto waitForStored = [this](std::string_view line) {
    waitFor(line, [&] {
      const auto settings = readFile(person.dataFolder() / "settings.ini");
      return settings && settings->find(line) != std::string::npos;
    });
  };
  waitForStored("startAtLogin=true"); // since everything is permitted
  open();
  window.expectChecked(control);
  person.chooseFromMenu(text(Text::startAtLogin));
  window.expectChecked(control, false);
  window.click(control);
  window.expectChecked(control);
  window.click(control);
  waitForStored("startAtLogin=false");

  person.restart();
  open();
  window.expectChecked(control, false);
}

} // namespace
} // namespace trellivar
