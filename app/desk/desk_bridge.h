#pragma once

#include "app/bridge/row_model.h"

#include <QtQml/qqmlregistration.h>

#include <QString>
#include <set>

class QJSEngine;
class QQmlEngine;

namespace trellivar {

class DeskSession;

namespace desk {
struct Received;
}

/// The window that stands for the hardware: the pad, its switch and its cable, the permissions, an
/// ordinary keyboard, and what the computer receives. A tool, in English.
class DeskBridge : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(Desk)
  QML_SINGLETON
  /// "P", "M" or "R".
  Q_PROPERTY(QString mode READ mode NOTIFY padChanged)
  /// "usb", "bluetooth" or "away".
  Q_PROPERTY(QString link READ link NOTIFY padChanged)
  /// The keys of the pad. Roles: keyId, isDown.
  Q_PROPERTY(trellivar::RowModel* keys READ keys CONSTANT)
  Q_PROPERTY(bool isAccessibilityGranted READ isAccessibilityGranted NOTIFY permissionsChanged)
  Q_PROPERTY(bool isInputMonitoringGranted READ isInputMonitoringGranted NOTIFY permissionsChanged)
  /// What applications received, the newest last. Roles: text, isFromEngine.
  Q_PROPERTY(trellivar::RowModel* received READ received CONSTANT)

public:
  explicit DeskBridge(DeskSession& session, QObject* parent = nullptr);
  static DeskBridge* create(QQmlEngine* engine, QJSEngine* scripts);

  QString mode() const;
  QString link() const;
  RowModel* keys() { return &keys_; }
  bool isAccessibilityGranted() const;
  bool isInputMonitoringGranted() const;
  RowModel* received() { return &received_; }

  Q_INVOKABLE void press(int keyId);
  Q_INVOKABLE void release(int keyId);
  /// Releases all keys of the pad that are down.
  Q_INVOKABLE void releaseAll();
  Q_INVOKABLE void setMode(const QString& mode);
  Q_INVOKABLE void setLink(const QString& link);
  Q_INVOKABLE void setAccessibilityGranted(bool granted);
  Q_INVOKABLE void setInputMonitoringGranted(bool granted);
  /// A key of the ordinary keyboard, by its name such as "left_command" or "c".
  Q_INVOKABLE void keyDown(const QString& name);
  Q_INVOKABLE void keyUp(const QString& name);
  Q_INVOKABLE void clear();

Q_SIGNALS:
  void padChanged();
  void permissionsChanged();

private:
  void showKeys();
  void hear(const desk::Received& received);

  DeskSession& session_;
  std::set<int> pressed_;
  RowModel keys_;
  RowModel received_;
};

} // namespace trellivar
