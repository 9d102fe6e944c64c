#pragma once

#include "app/bridge/refreshing.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <QStringList>

namespace trellivar {

/// The panel that writes into the pad.
class WriteBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// "idle", "writing", "needPad", "error" or "done".
  Q_PROPERTY(QString state READ state NOTIFY stateChanged)
  /// What has become of the write; empty while idle.
  Q_PROPERTY(QString text READ text NOTIFY textChanged)
  /// A line for each mode that was written.
  Q_PROPERTY(QStringList lines READ lines NOTIFY linesChanged)

public:
  explicit WriteBridge(AppRoot& root, QObject* parent = nullptr);

  QString state() const { return state_; }
  QString text() const { return text_; }
  QStringList lines() const { return lines_; }

  Q_INVOKABLE void write();

  void refresh() override;

Q_SIGNALS:
  void stateChanged();
  void textChanged();
  void linesChanged();

private:
  AppRoot& root_;
  QString state_;
  QString text_;
  QStringList lines_;
};

} // namespace trellivar
