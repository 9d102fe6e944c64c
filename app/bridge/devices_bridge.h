#pragma once

#include "app/bridge/refreshing.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

namespace trellivar {

/// How the pad is connected.
class DevicesBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// "usb", "wireless" or "none".
  Q_PROPERTY(QString link READ link NOTIFY linkChanged)
  Q_PROPERTY(QString chipText READ chipText NOTIFY chipTextChanged)
  Q_PROPERTY(QString explanation READ explanation NOTIFY explanationChanged)
  Q_PROPERTY(QString stageHint READ stageHint NOTIFY stageHintChanged)
  /// The position of the pad's switch, as far as the connected pad tells it; empty otherwise.
  Q_PROPERTY(QString padMode READ padMode NOTIFY padModeChanged)

public:
  explicit DevicesBridge(AppRoot& root, QObject* parent = nullptr);

  QString link() const { return link_; }
  QString chipText() const { return chipText_; }
  QString explanation() const { return explanation_; }
  QString stageHint() const { return stageHint_; }
  QString padMode() const { return padMode_; }

  /// Looks for devices.
  Q_INVOKABLE void lookAgain();

  void refresh() override;

Q_SIGNALS:
  void linkChanged();
  void chipTextChanged();
  void explanationChanged();
  void stageHintChanged();
  void padModeChanged();

private:
  AppRoot& root_;
  QString link_;
  QString chipText_;
  QString explanation_;
  QString stageHint_;
  QString padMode_;
};

} // namespace trellivar
