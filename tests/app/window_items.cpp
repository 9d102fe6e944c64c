#include "tests/app/window_items.h"

#include <QAccessibleInterface>
#include <algorithm>
#include <functional>

namespace trellivar {

namespace {

void addSeen(QQuickItem& item, QList<QQuickItem*>& to) {
  if (!item.isVisible() || item.opacity() == 0) return;
  to += &item;
  // In the order of painting; equals stay as they are.
  QList<QQuickItem*> children = item.childItems();
  std::ranges::stable_sort(children, {}, &QQuickItem::z);
  for (QQuickItem* child : children)
    addSeen(*child, to);
}

} // namespace

bool isSeen(const QQuickItem& item) {
  for (const QQuickItem* around = &item; around; around = around->parentItem()) {
    if (!around->isVisible() || around->opacity() == 0) return false;
  }
  return true;
}

QList<QQuickItem*> seenItems(const QQuickWindow& window) {
  QList<QQuickItem*> items;
  addSeen(*window.contentItem(), items);
  return items;
}

QQuickItem* sheetOf(QQuickItem& item) {
  QQuickItem* outermost = nullptr;
  for (QQuickItem* around = &item; around; around = around->parentItem()) {
    if (around->parent() && around->parent()->inherits("QQuickPopup")) outermost = around;
  }
  return outermost;
}

QList<QQuickItem*> reachableItems(const QQuickWindow& window) {
  QList<QQuickItem*> items = seenItems(window);
  const auto isModal = [](QQuickItem* item) {
    const QQuickItem* sheet = sheetOf(*item);
    return sheet && sheet->parent()->property("modal").toBool();
  };
  if (std::ranges::any_of(items, isModal)) items.removeIf(std::not_fn(isModal));
  return items;
}

bool isText(const QQuickItem& item) { return item.inherits("QQuickText"); }

QRectF lettersOf(const QQuickItem& text) {
  const auto number = [&text](const char* name) { return text.property(name).toReal(); };
  const QSizeF size(number("contentWidth"), number("contentHeight"));
  const double roomX = text.width() - number("leftPadding") - number("rightPadding") - size.width();
  const double roomY =
      text.height() - number("topPadding") - number("bottomPadding") - size.height();
  double x = number("leftPadding");
  double y = number("topPadding");
  const int across = text.property("effectiveHorizontalAlignment").toInt();
  const int down = text.property("verticalAlignment").toInt();
  if (across & Qt::AlignHCenter) x += roomX / 2;
  if (across & Qt::AlignRight) x += roomX;
  if (down & Qt::AlignVCenter) y += roomY / 2;
  if (down & Qt::AlignBottom) y += roomY;
  return text.mapRectToScene({{x, y}, size});
}

QString componentOf(const QQuickItem& item) {
  return QString(item.metaObject()->className()).section("_QML", 0, 0);
}

QRectF placeOf(const QQuickItem& item) { return item.mapRectToScene(item.boundingRect()); }

QString accessibleName(QQuickItem& item) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item);
  return interface ? interface->text(QAccessible::Name) : QString();
}

QAccessible::Role accessibleRole(QQuickItem& item) {
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&item);
  return interface ? interface->role() : QAccessible::NoRole;
}

bool isControl(QQuickItem& item) {
  switch (accessibleRole(item)) {
  case QAccessible::Button:
  case QAccessible::ButtonMenu:
  case QAccessible::RadioButton:
  case QAccessible::CheckBox:
  case QAccessible::EditableText:
  case QAccessible::ComboBox:
  case QAccessible::MenuItem:
  case QAccessible::Link:
  case QAccessible::PageTab:
  case QAccessible::Slider:
    return true;
  default:
    return false;
  }
}

QString described(QQuickItem& item) {
  return componentOf(item) + " \"" +
         (isText(item) ? item.property("text").toString() : accessibleName(item)) + '"';
}

} // namespace trellivar
