#include "tests/app/journeys/surface.h"

#include "tests/app/journeys/running_application.h"
#include "tests/app/journeys/screen.h"
#include "tests/app/journeys/waiting.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <algorithm>

namespace trellivar {

namespace {

bool isWanted(const Control& control, const Wanted& wanted) {
  return (wanted.role == QAccessible::NoRole || control.role == wanted.role) &&
         (!wanted.isCheckable || control.isCheckable == wanted.isCheckable) &&
         (wanted.isBeginning ? control.name.starts_with(wanted.name) : control.name == wanted.name);
}

std::string inWords(const Wanted& wanted) {
  return '"' + wanted.name + (wanted.isBeginning ? "…\"" : "\"");
}

} // namespace

std::optional<Display::WindowId> Surface::id() {
  const auto found = display_.windows(title_);
  return found.empty() ? std::nullopt : std::optional(found.front());
}

void Surface::arrange() {
  std::optional<Display::WindowId> window;
  waitFor("a window is called " + title_, [&] { return (window = id()).has_value(); });
  display_.place(*window, place_);
  waitFor(title_ + " is in its place", [this] { return isInPlace(); });
}

bool Surface::isInPlace() const {
  const auto all = controls();
  return !all.empty() && all.front().place == place_;
}

void Surface::close() {
  display_.close(id().value());
  waitFor(title_ + " is closed", [this] { return !id(); });
}

std::vector<Control> Surface::controls() const {
  std::vector<Control> all;
  onMainThread([&] { all = controlsInSight(); });
  std::erase_if(all, [this](const Control& control) { return control.window != title_; });
  return all;
}

std::vector<Control> Surface::matches(const Wanted& wanted) const {
  auto found = controls();
  std::erase_if(found, [&](const Control& control) { return !isWanted(control, wanted); });
  return found;
}

std::vector<std::string> Surface::texts() const {
  std::vector<std::string> all;
  onMainThread([&] { all = textsInSight(title_); });
  return all;
}

bool Surface::isDark() const {
  const QPoint ground = place_.bottomRight() - QPoint(4, 4);
  return pictureOf({ground, QSize(1, 1)}).pixelColor(0, 0).lightness() < 128;
}

bool Surface::shows(std::string_view text) const { return std::ranges::count(texts(), text) > 0; }

Control Surface::find(const Wanted& wanted) const {
  std::vector<Control> before;
  waitFor(title_ + " shows one " + inWords(wanted), [&] {
    const auto now = matches(wanted);
    return std::exchange(before, now) == now && now.size() == 1;
  });
  return before.front();
}

void Surface::expect(std::string_view text) const {
  waitFor(title_ + " shows \"" + std::string(text) + '"', [&] { return shows(text); });
}

void Surface::expectNot(std::string_view text) const {
  waitFor(title_ + " no longer shows \"" + std::string(text) + '"', [&] { return !shows(text); });
}

void Surface::expectChecked(const Wanted& wanted, bool isChecked) const {
  waitFor(inWords(wanted) + (isChecked ? " is chosen" : " is not chosen"), [&] {
    const auto found = matches(wanted);
    return found.size() == 1 && found.front().isChecked == isChecked;
  });
}

void Surface::expectFocused(const Wanted& wanted) const {
  waitFor(inWords(wanted) + " has the focus", [&] { return isWanted(focused(), wanted); });
}

/// The innermost.
Control Surface::focused() const {
  Control last;
  for (const Control& control : controls()) {
    if (control.isFocused) last = control;
  }
  return last;
}

void Surface::takeFocus() {
  const auto window = id().value();
  if (display_.hasFocus(window)) return;
  display_.raise(window);
  display_.focus(window);
}

void Surface::pointAt(const Wanted& wanted) {
  waitFor(inWords(wanted) + " can be used", [&] { return find(wanted).isEnabled; });
  takeFocus();
  display_.pointAt(find(wanted).place.center());
}

void Surface::click(const Wanted& wanted) {
  hold(wanted);
  letGo();
}

void Surface::doubleClick(const Wanted& wanted) {
  click(wanted);
  display_.pressButton();
  display_.releaseButton();
}

void Surface::hold(const Wanted& wanted) {
  pointAt(wanted);
  display_.pressButton();
}

void Surface::type(Display::Key key) {
  takeFocus();
  display_.type(key);
}

void Surface::type(std::initializer_list<Display::Key> keys) {
  for (const Display::Key key : keys)
    type(key);
}

void Surface::type(std::string_view text) {
  takeFocus();
  display_.type(text);
}

void Surface::press(Display::Key key) {
  takeFocus();
  display_.press(key);
}

void Surface::moveTo(const Wanted& wanted, Display::Key with) {
  Control from = focused();
  while (!isWanted(from, wanted)) {
    type(with);
    waitFor("the focus moves on to " + inWords(wanted), [&] { return focused() != from; });
    from = focused();
  }
}

} // namespace trellivar
