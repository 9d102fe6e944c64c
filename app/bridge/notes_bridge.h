#pragma once

#include "app/bridge/refreshing.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

#include <cstdint>

namespace trellivar {

/// The one thing that keeps the pad from working as it should, told quietly below it: no engine, a
/// permission that has been withdrawn, or a mode that nobody has discovered.
class NoteBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// Empty without a note.
  Q_PROPERTY(QString title READ title NOTIFY changed)
  Q_PROPERTY(QString detail READ detail NOTIFY changed)
  /// What its button says; empty without one.
  Q_PROPERTY(QString action READ action NOTIFY changed)

public:
  enum class Kind : std::uint8_t { none, noEngine, accessibility, inputMonitoring, undiscovered };

  NoteBridge(AppRoot& root, bool hasEngine, QObject* parent = nullptr);

  Kind kind() const;
  QString title() const { return title_; }
  QString detail() const { return detail_; }
  QString action() const { return action_; }

  void refresh() override;

Q_SIGNALS:
  void changed();

private:
  AppRoot& root_;
  bool hasEngine_;
  QString title_;
  QString detail_;
  QString action_;
};

} // namespace trellivar
