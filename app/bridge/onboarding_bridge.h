#pragma once

#include "app/bridge/refreshing.h"
#include "app/bridge/row_model.h"
#include "viewmodels/app_root.h"

#include <QtQml/qqmlregistration.h>

namespace trellivar {

/// The checklist of the first start.
class OnboardingBridge : public Refreshing {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Given by App")
  /// Roles: title, why, badge, state ("done", "active" or "pending"), action (the text of its
  /// button; empty without one).
  Q_PROPERTY(trellivar::RowModel* steps READ steps CONSTANT)
  Q_PROPERTY(bool canContinue READ canContinue NOTIFY canContinueChanged)

public:
  explicit OnboardingBridge(AppRoot& root, QObject* parent = nullptr);

  RowModel* steps() { return &steps_; }
  bool canContinue() const { return canContinue_; }

  void refresh() override;

Q_SIGNALS:
  void canContinueChanged();

private:
  AppRoot& root_;
  RowModel steps_;
  bool canContinue_ = false;
};

} // namespace trellivar
