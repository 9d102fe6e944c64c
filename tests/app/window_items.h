#pragma once

#include <QAccessible>
#include <QList>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

namespace trellivar {

/// Whether people see it: neither it nor anything around it is hidden or transparent.
bool isSeen(const QQuickItem& item);
/// What people see, in the order in which it is painted, sheets and pop-overs last.
QList<QQuickItem*> seenItems(const QQuickWindow& window);
/// The pop-over or sheet that an item is on; null for the window itself.
QQuickItem* sheetOf(QQuickItem& item);
/// What people see and can work: only what is on top while that keeps from everything else.
QList<QQuickItem*> reachableItems(const QQuickWindow& window);
bool isText(const QQuickItem& item);
/// Where the letters of a text are, in the window.
QRectF lettersOf(const QQuickItem& text);
/// "KeycapView" for an item of KeycapView.qml.
QString componentOf(const QQuickItem& item);
/// A rectangle around it in the window.
QRectF placeOf(const QQuickItem& item);

/// What assistive technology knows about an item.
QString accessibleName(QQuickItem& item);
QAccessible::Role accessibleRole(QQuickItem& item);
/// It can be worked: a button, a choice, a field.
bool isControl(QQuickItem& item);
/// Short, for messages: "ActionButton "Cancel"".
QString described(QQuickItem& item);

} // namespace trellivar
