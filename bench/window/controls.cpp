#include "bench/window/controls.h"

#include <QAccessible>
#include <QEventLoop>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace trellivar {

namespace {

QAccessibleInterface* find(QAccessibleInterface* in, const QString& name) {
  const QAccessible::State state = in->state();
  if (in->text(QAccessible::Name).startsWith(name) && in->actionInterface() && !state.invisible &&
      !state.disabled)
    return in;
  for (int i = 0; i < in->childCount(); ++i) {
    QAccessibleInterface* child = in->child(i);
    if (QAccessibleInterface* found = child ? find(child, name) : nullptr) return found;
  }
  return nullptr;
}

[[noreturn]] void fail(const char* what, const QString& name) {
  std::fprintf(stderr, "no %s is named \"%s\"\n", what, qPrintable(name));
  std::exit(1); // NOLINT(concurrency-mt-unsafe): ends a measurement
}

QWindow& mainWindow() {
  const QString title = "Trellivar";
  for (QWindow* window : QGuiApplication::topLevelWindows()) {
    if (window->title() == title) return *window;
  }
  fail("window", title);
}

QAccessibleInterface* find(const QString& name) {
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(&mainWindow());
  return root ? find(root, name) : nullptr;
}

void click(const QAccessibleInterface& control) {
  QWindow* window = control.window();
  const QPointF global = control.rect().center();
  const QPointF local = window->mapFromGlobal(global);
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QMouseEvent event(type, local, global, Qt::LeftButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &event);
  }
}

} // namespace

bool waitUntil(const std::function<bool()>& condition) {
  using namespace std::chrono_literals;
  const auto end = std::chrono::steady_clock::now() + 10s;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    letPass(10);
  }
  return true;
}

void letPass(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

void press(const QString& name) {
  if (!waitUntil([&] { return find(name) != nullptr; })) fail("control", name);
  click(*find(name));
}

void pressEscape() {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(&mainWindow(), &event);
  }
}

} // namespace trellivar
