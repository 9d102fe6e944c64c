#pragma once

#include <QAccessible>
#include <QRect>
#include <string>
#include <vector>

namespace trellivar {

/// What assistive technology is told of something that is in sight.
struct Control {
  std::string window; ///< its title
  int depth = 0;      ///< in the tree of its window
  QAccessible::Role role = QAccessible::NoRole;
  std::string name;
  std::string description;
  std::string value; ///< what stands in a field
  QRect place;       ///< on the screen
  bool isEnabled = true;
  bool isCheckable = false;
  bool isChecked = false;
  bool isFocused = false;

  friend bool operator==(const Control&, const Control&) = default;
};

/// Everything in sight in all windows of the application. Main thread.
std::vector<Control> controlsInSight();

/// The texts that are painted in the window of that title. Main thread.
std::vector<std::string> textsInSight(const std::string& title);
/// Those that were painted last in that window, which is closed. Main thread.
std::vector<std::string> textsOfTheClosed(const std::string& title);

/// One line a control, indented as in its window.
std::string treeOf(const std::vector<Control>& controls);

} // namespace trellivar
