#include "tests/app/journeys/person.h"

#include "tests/app/journeys/screen.h"
#include "tests/app/journeys/warnings.h"

#include <QMenu>
#include <algorithm>
#include <utility>

namespace trellivar {

namespace {

/// It is called by its number and what it does.
Wanted keycap(int key) {
  return {.name = std::to_string(key) + ' ', .role = QAccessible::Button, .isBeginning = true};
}

void setFolder(const char* variable, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
  qputenv(variable, QByteArray::fromStdString(folder.string()));
}

} // namespace

Person::Person() {
  setFolder("HOME", folder / "home");
  setFolder("XDG_CONFIG_HOME", folder / "home/config");
  setFolder("XDG_RUNTIME_DIR", folder / "home/runtime");
  L10n::setCurrent(AppLanguage::en);
  takeWarnings();
}

Person::~Person() {
  application_.reset();
  EXPECT_EQ(takeWarnings(), "");
}

QStringList Person::arguments() const {
  return {"--simulate", "--data-dir", QString::fromStdString(dataFolder().string())};
}

void Person::start() {
  waitFor("the windows of the last run are gone", [this] { return !window.id() && !desk.id(); });
  application_.emplace(arguments());
  window.arrange();
  desk.arrange();
}

void Person::goOnToThePad() {
  window.click(button(text(Text::continueButton)));
  window.expect(choice("P"));
}

int Person::waitForItsEnd() {
  waitFor("the application has ended", [this] { return !application_->isRunning(); });
  const int exitCode = application_->exitCode();
  application_.reset();
  return exitCode;
}

int Person::quit() {
  onMainThread([] { QCoreApplication::quit(); });
  return waitForItsEnd();
}

void Person::restart() {
  EXPECT_EQ(quit(), 0);
  start();
  window.expect(choice("P"));
}

void Person::chooseFromMenu(std::string_view entry) {
  constexpr QPoint corner(100, 700);
  onMainThread([&] { statusMenu()->popup(corner); });
  Surface menu(display_, "menu", {});
  display_.pointAt(menu.find({std::string(entry), QAccessible::MenuItem, {}}).place.center());
  display_.pressButton();
  display_.releaseButton();
}

QImage Person::pictureOfTheWindow() {
  const QRect place = window.place();
  display_.pointAt(place.bottomRight() + QPoint(5, 5));
  display_.focus(window.id().value());
  QImage picture;
  waitFor("the window rests", [&] {
    const QImage now = pictureOf(place);
    return std::exchange(picture, now) == now;
  });
  return picture;
}

void Person::select(int key) {
  window.click(keycap(key));
  waitFor("key " + std::to_string(key) + " is selected", [&] {
    const auto title = L10n::t(Text::keyN, key);
    return std::ranges::any_of(window.controls(), [&](const Control& it) {
      return it.role == QAccessible::Heading && it.name.starts_with(title);
    });
  });
}

void Person::bind(int key, Text libraryOutput) {
  select(key);
  const Wanted output = choice(text(libraryOutput));
  window.click(output);
  window.expectChecked(output);
}

void Person::bring(std::string_view mode, std::string_view link) {
  connect("Away");
  window.expect(text(Text::chipNone));
  turnTo(mode);
  connect(link);
  window.expectNot(text(Text::chipNone));
}

void Person::permit(std::string_view permission, bool isGranted) {
  const Wanted control = toggle(permission);
  if (desk.find(control).isChecked != isGranted) desk.click(control);
  desk.expectChecked(control, isGranted);
}

void Person::hold(int key) { desk.hold(button("Pad key " + std::to_string(key))); }

void Person::press(int key) {
  hold(key);
  letGo();
}

void Person::pressUntil(int key, std::string_view what, const std::function<bool()>& condition) {
  using Clock = std::chrono::steady_clock;
  Clock::time_point next{};
  waitFor(what, [&] {
    if (condition()) return true;
    if (Clock::now() < next) return false;
    next = Clock::now() + std::chrono::milliseconds(2500);
    press(key);
    return condition();
  });
}

std::string Person::heard() const {
  std::string list;
  for (const Control& row : desk.controls()) {
    if (row.role != QAccessible::ListItem) continue;
    const std::size_t gap = row.name.find(' ');
    list += (list.empty() ? "" : " ") + row.name.substr(0, gap) +
            (row.name.substr(gap + 1) == "↓" ? '+' : '-');
  }
  return list;
}

void Person::forget() {
  const Wanted clear = button("Clear");
  if (desk.find(clear).isEnabled) desk.click(clear);
  waitFor("the list is empty", [this] { return heard().empty(); });
}

void Person::waitToHear(const std::string& expected) const {
  waitFor("the computer has received \"" + expected + '"', [&] { return heard() == expected; });
}

void Person::hears(const std::string& expected) {
  waitToHear(expected);
  // Whatever else comes, comes before a key that is struck later.
  strike("z");
  waitToHear(expected + " z+ z-");
  forget();
}

void Person::hearsFrom(int key, const std::string& expected) {
  forget();
  press(key);
  hears(expected);
}

} // namespace trellivar
