#include "app/bridge/app_bridge.h"
#include "tests/app/stage.h"
#include "tests/app/stage_world.h"
#include "tests/app/still_animations.h"
#include "tests/app/window_items.h"

#include <QAccessibleInterface>
#include <QCoreApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QScreen>
#include <QtTest>
#include <algorithm>
#include <cmath>
#include <stdexcept>

// The window on the stage: what is seen in it, and who works it.

namespace trellivar {

/// Items take their places with the next frame, so it is painted now.
void Stage::layOut() {
  if (!window() || !window()->isExposed()) return;
  QEvent frame(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(window(), &frame);
}

void Stage::open() {
  root().start();
  app().refresh();
  QQmlComponent main(&world_->qml, QUrl("qrc:/Trellivar/qml/Main.qml"));
  openWindow(std::unique_ptr<QObject>(main.create()));
}

void Stage::goOn() {
  pass(AppRoot::pollInterval.count());
  app().finishOnboarding();
  settle();
}

QQuickItem* Stage::show(const QString& qml) {
  QQmlComponent component(&world_->qml);
  component.setData("import QtQuick\n"
                    "import QtQuick.Controls.Basic\n"
                    "import QtQuick.Layouts\n"
                    "import Trellivar\n"
                    "ApplicationWindow {\n"
                    "visible: true; width: 880; height: 600; color: Theme.window\n" +
                        qml.toUtf8() + "\n}\n",
                    QUrl("stage.qml"));
  openWindow(std::unique_ptr<QObject>(component.create()));
  const auto items = window()->property("contentItem").value<QQuickItem*>()->childItems();
  QQuickItem* first = items.isEmpty() ? nullptr : items.first();
  if (first) QJSEngine::setObjectOwnership(first, QJSEngine::CppOwnership);
  return first;
}

void Stage::openWindow(std::unique_ptr<QObject> window) {
  world_->content = std::move(window);
  world_->window = qobject_cast<QQuickWindow*>(world_->content.get());
  if (!world_->window) throw std::runtime_error("the window cannot be made");
  // Out of the way, or the window begins with something hovered.
  QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
  world_->window->setPosition(0, 0);
  world_->window->requestActivate();
  if (!QTest::qWaitForWindowActive(world_->window))
    throw std::runtime_error("the window does not become active");
  settle();
}

void Stage::resize(int width, int height) {
  window()->resize(width, height);
  if (!QTest::qWaitFor([&] { return window()->size() == QSize(width, height); }))
    throw std::runtime_error("the window keeps its size");
  settle();
}

QQuickItem* Stage::control(const QString& name) const {
  for (QQuickItem* item : seenItems(*window())) {
    if (!isControl(*item) || accessibleName(*item) != name) continue;
    QJSEngine::setObjectOwnership(item, QJSEngine::CppOwnership);
    return item;
  }
  return nullptr;
}

QQuickItem* Stage::part(const QString& component, int number) const {
  for (QQuickItem* item : seenItems(*window())) {
    if (componentOf(*item) != component || number-- > 0) continue;
    QJSEngine::setObjectOwnership(item, QJSEngine::CppOwnership);
    return item;
  }
  return nullptr;
}

int Stage::count(const QString& component) const {
  const auto items = seenItems(*window());
  return static_cast<int>(std::ranges::count(
      items, component, [](const QQuickItem* item) { return componentOf(*item); }));
}

QStringList Stage::texts() const {
  QStringList texts;
  for (const QQuickItem* item : seenItems(*window())) {
    if (isText(*item)) texts += item->property("text").toString();
  }
  return texts;
}

QStringList Stage::names() const {
  QStringList names;
  for (QQuickItem* item : seenItems(*window())) {
    if (isControl(*item) && componentOf(*item) != "PickerKey") names += accessibleName(*item);
  }
  return names;
}

QString Stage::focused() const {
  QQuickItem* item = window()->activeFocusItem();
  return item ? accessibleName(*item) : QString();
}

int Stage::role(QQuickItem* item) const { return accessibleRole(*item); }

QString Stage::name(QQuickItem* item) const { return accessibleName(*item); }

QString Stage::description(QQuickItem* item) const {
  return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Description);
}

bool Stage::isChecked(QQuickItem* item) const {
  return QAccessible::queryAccessibleInterface(item)->state().checked;
}

QStringList Stage::alerts() const {
  QStringList alerts;
  for (QQuickItem* item : seenItems(*window())) {
    if (accessibleRole(*item) == QAccessible::AlertMessage) alerts += accessibleName(*item);
  }
  return alerts;
}

qreal Stage::opacityOf(QQuickItem* item) const {
  qreal opacity = 1;
  for (; item; item = item->parentItem())
    opacity *= item->opacity();
  return opacity;
}

bool Stage::movesIn(double seconds) {
  const QImage before = window()->grabWindow();
  StillAnimations::ofTheProcess().pass(std::llround(seconds * 1000));
  settle();
  return window()->grabWindow() != before;
}

QPoint Stage::middleOf(const QQuickItem& item) const { return placeOf(item).center().toPoint(); }

void Stage::click(QQuickItem* item) {
  QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(*item));
  settle();
}

void Stage::doubleClick(QQuickItem* item) {
  QTest::mouseDClick(window(), Qt::LeftButton, {}, middleOf(*item));
  settle();
}

void Stage::hover(QQuickItem* item) {
  QTest::mouseMove(window(), middleOf(*item));
  settle();
}

void Stage::pointAway() {
  QTest::mouseMove(window(), QPoint(1, 1));
  settle();
}

void Stage::key(int key, int modifiers) {
  QTest::keyClick(window(), static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
  settle();
}

void Stage::keyDown(int key, int modifiers) {
  QTest::simulateEvent(window(), true, key, Qt::KeyboardModifiers(modifiers), {}, false);
  settle();
}

void Stage::keyRepeats(int key) {
  QTest::simulateEvent(window(), false, key, Qt::NoModifier, {}, true);
  QTest::simulateEvent(window(), true, key, Qt::NoModifier, {}, true);
  settle();
}

void Stage::keyUp(int key, int modifiers) {
  QTest::simulateEvent(window(), false, key, Qt::KeyboardModifiers(modifiers), {}, false);
  settle();
}

void Stage::turnAway() {
  QFocusEvent away(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(window(), &away);
  settle();
}

void Stage::turnBack() {
  QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
  QCoreApplication::sendEvent(window(), &back);
  settle();
}

void Stage::type(const QString& text) {
  for (const QChar character : text)
    QTest::sendKeyEvent(QTest::Click, window(), Qt::Key_unknown, character, {});
  settle();
}

void Stage::assist(QQuickItem* item, const QString& action) {
  QAccessible::queryAccessibleInterface(item)->actionInterface()->doAction(action);
  settle();
}

QQuickWindow* Stage::window() const { return world_->window; }

} // namespace trellivar
