#pragma once

#include "tests/app/journeys/controls.h"
#include "tests/app/journeys/display.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace trellivar {

/// A control as a person looks for it: by what it is and what it is called.
struct Wanted {
  std::string name;
  QAccessible::Role role = QAccessible::NoRole; ///< any
  std::optional<bool> isCheckable = {};         ///< none: either
  bool isBeginning = false;                     ///< the name goes on
};

inline Wanted button(std::string_view name) {
  return {std::string(name), QAccessible::Button, false};
}
/// One of several that exclude each other, or a key that stays down.
inline Wanted choice(std::string_view name) {
  return {std::string(name), QAccessible::NoRole, true};
}
inline Wanted toggle(std::string_view name) { return {std::string(name), QAccessible::CheckBox}; }
inline Wanted field(std::string_view name) {
  return {std::string(name), QAccessible::EditableText};
}
inline Wanted heading(std::string_view name) { return {std::string(name), QAccessible::Heading}; }
inline Wanted alert(std::string_view name) {
  return {std::string(name), QAccessible::AlertMessage};
}
/// What is told beside the pad, by its title.
inline Wanted note(std::string_view title) {
  return {std::string(title) + '\n', QAccessible::AlertMessage, {}, true};
}

/// A window as a person has it before them. Where something is looked for that is not there yet, it
/// is waited for.
class Surface {
public:
  Surface(Display& display, std::string title, const QRect& place)
      : display_(display), title_(std::move(title)), place_(place) {}

  const QRect& place() const { return place_; }
  /// None while it is closed.
  std::optional<Display::WindowId> id();
  /// Waits for the window, and moves it to its place.
  void arrange();
  void close();

  // Looking
  std::vector<Control> controls() const;
  std::vector<Control> matches(const Wanted& wanted) const;
  bool shows(const Wanted& wanted) const { return !matches(wanted).empty(); }
  std::vector<std::string> texts() const;
  /// As painted, near its lower right corner.
  bool isDark() const;
  bool shows(std::string_view text) const;
  /// The only one like that, once it rests.
  Control find(const Wanted& wanted) const;
  void expect(const Wanted& wanted) const { find(wanted); }
  void expect(std::string_view text) const;
  void expectNot(std::string_view text) const;
  void expectChecked(const Wanted& wanted, bool isChecked = true) const;

  void expectFocused(const Wanted& wanted) const;

  // The mouse
  void click(const Wanted& wanted);
  void doubleClick(const Wanted& wanted);
  void hold(const Wanted& wanted);
  void letGo() { display_.releaseButton(); }

  // The keyboard
  void type(Display::Key key);
  void type(std::initializer_list<Display::Key> keys);
  void type(std::string_view text);
  void press(Display::Key key);
  /// Tab by Tab.
  void tabTo(const Wanted& wanted) { moveTo(wanted, Display::tab); }
  /// Again and again with that key, until the wanted control has the focus.
  void moveTo(const Wanted& wanted, Display::Key with);
  void release(Display::Key key) { display_.release(key); }

private:
  bool isInPlace() const;
  Control focused() const;
  void takeFocus();
  void pointAt(const Wanted& wanted);

  Display& display_;
  std::string title_;
  QRect place_;
};

} // namespace trellivar
