#pragma once

#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/discovery_view_model.h"
#include "viewmodels/settings_store.h"

#include <QtQml/qqmlregistration.h>

#include <memory>

namespace trellivar {

/// The sheet that teaches one mode. It lives as long as the sheet.
class DiscoveryBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  Q_PROPERTY(QString mode READ mode CONSTANT)
  /// "flipSwitch", "pressKey", "review" or "done".
  Q_PROPERTY(QString step READ step NOTIFY stepChanged)
  Q_PROPERTY(QString sheetTitle READ sheetTitle NOTIFY textsChanged)
  /// What is asked for, large and small.
  Q_PROPERTY(QString title READ title NOTIFY textsChanged)
  Q_PROPERTY(QString detail READ detail NOTIFY textsChanged)
  /// What the button of the step says.
  Q_PROPERTY(QString action READ action NOTIFY textsChanged)
  /// The key that is asked for; 0 otherwise.
  Q_PROPERTY(int keyId READ keyId NOTIFY stepChanged)
  /// Roles: keyId, name, isCaptured, isAsked.
  Q_PROPERTY(trellivar::RowModel* keys READ keys CONSTANT)
  Q_PROPERTY(bool isCapturing READ isCapturing NOTIFY isCapturingChanged)
  /// Of listening for a key.
  Q_PROPERTY(int listeningMilliseconds READ listeningMilliseconds CONSTANT)
  Q_PROPERTY(QString error READ error NOTIFY errorChanged)

public:
  DiscoveryBridge(std::shared_ptr<DiscoveryViewModel> model, const SettingsStore& settings,
                  QObject* parent = nullptr);

  QString mode() const;
  QString step() const { return step_; }
  QString sheetTitle() const { return sheetTitle_; }
  QString title() const { return title_; }
  QString detail() const { return detail_; }
  QString action() const { return action_; }
  int keyId() const { return keyId_; }
  RowModel* keys() { return &keys_; }
  bool isCapturing() const { return isCapturing_; }
  int listeningMilliseconds() const;
  QString error() const { return error_; }

  Q_INVOKABLE void checkPresence();
  /// Listens for the key that is asked for.
  Q_INVOKABLE void capture();
  Q_INVOKABLE void save();

  void refresh() override;

Q_SIGNALS:
  void stepChanged();
  void textsChanged();
  void isCapturingChanged();
  void errorChanged();

private:
  struct Texts {
    QString title;
    QString detail;
    QString action;
  };
  Texts texts() const;

  std::shared_ptr<DiscoveryViewModel> model_;
  RowModel keys_;
  QString step_;
  QString sheetTitle_;
  QString title_;
  QString detail_;
  QString action_;
  int keyId_ = 0;
  bool isCapturing_ = false;
  QString error_;
};

} // namespace trellivar
