#include "tests/app/journeys/controls.h"

#include <QApplication>
#include <QMenu>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <sstream>

namespace trellivar {

namespace {

using Controls = std::vector<Control>;

std::string textOf(QAccessibleInterface& object, QAccessible::Text text) {
  return object.text(text).toStdString();
}

/// The state of an item does not tell.
bool isEnabled(QAccessibleInterface& object) {
  const auto* item = qobject_cast<const QQuickItem*>(object.object());
  return item ? item->isEnabled() : !object.state().disabled;
}

Control described(QAccessibleInterface& object, const std::string& window, int depth) {
  const QAccessible::State state = object.state();
  return {.window = window,
          .depth = depth,
          .role = object.role(),
          .name = textOf(object, QAccessible::Name),
          .description = textOf(object, QAccessible::Description),
          .value = textOf(object, QAccessible::Value),
          .place = object.rect(),
          .isEnabled = isEnabled(object),
          .isCheckable = static_cast<bool>(state.checkable),
          .isChecked = static_cast<bool>(state.checked),
          .isFocused = static_cast<bool>(state.focused)};
}

void describe(QAccessibleInterface& object, const std::string& window, int depth, Controls& into) {
  const QAccessible::State state = object.state();
  if (depth > 0 && (state.invisible || state.offscreen)) return;
  into.push_back(described(object, window, depth));
  for (int i = 0; i < object.childCount(); ++i) {
    if (QAccessibleInterface* child = object.child(i)) describe(*child, window, depth + 1, into);
  }
}

void describe(QObject* window, const QString& title, Controls& into) {
  if (QAccessibleInterface* object = QAccessible::queryAccessibleInterface(window))
    describe(*object, title.toStdString(), 0, into);
}

void collectTexts(const QQuickItem& item, std::vector<std::string>& into) {
  if (!item.isVisible() || item.opacity() == 0) return;
  const std::string text = item.property("text").toString().toStdString();
  if (!text.empty()) into.push_back(text);
  for (const QQuickItem* child : item.childItems())
    collectTexts(*child, into);
}

std::vector<std::string> texts(const std::string& title, bool isOpen) {
  std::vector<std::string> found;
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    const auto* quick = qobject_cast<QQuickWindow*>(window);
    if (quick && quick->isVisible() == isOpen && quick->title().toStdString() == title)
      collectTexts(*quick->contentItem(), found);
  }
  return found;
}

} // namespace

Controls controlsInSight() {
  Controls controls;
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->isVisible() && qobject_cast<QQuickWindow*>(window))
      describe(window, window->title(), controls);
  }
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && qobject_cast<QMenu*>(widget)) describe(widget, "menu", controls);
  }
  return controls;
}

std::vector<std::string> textsInSight(const std::string& title) { return texts(title, true); }

std::vector<std::string> textsOfTheClosed(const std::string& title) { return texts(title, false); }

std::string treeOf(const Controls& controls) {
  const auto roles = QMetaEnum::fromType<QAccessible::Role>();
  std::ostringstream lines;
  for (const Control& control : controls) {
    if (control.depth == 0) lines << "window \"" << control.window << "\"\n";
    const QRect& at = control.place;
    lines << std::string(static_cast<std::size_t>(control.depth) * 2 + 2, ' ')
          << roles.valueToKey(control.role) << " \"" << control.name << '"';
    if (!control.description.empty()) lines << " (" << control.description << ')';
    if (!control.value.empty()) lines << " = " << control.value;
    lines << (control.isEnabled ? "" : " disabled")
          << (control.isChecked     ? " checked"
              : control.isCheckable ? " unchecked"
                                    : "")
          << (control.isFocused ? " focused" : "") << " at " << at.x() << ',' << at.y() << ' '
          << at.width() << 'x' << at.height() << '\n';
  }
  return lines.str();
}

} // namespace trellivar
