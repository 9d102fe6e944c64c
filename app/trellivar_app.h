#pragma once

#include "app/app_delegate.h"
#include "app/bridge/app_bridge.h"
#include "app/computer.h"
#include "app/options.h"
#include "app/platform/platform_services.h"
#include "app/qt_queues.h"
#include "viewmodels/app_root.h"

#include <QQmlApplicationEngine>
#include <memory>

namespace trellivar {

/// Builds every object of the application once. Its single window shows `AppRoot`.
class TrellivarApp {
public:
  explicit TrellivarApp(const Options& options);
  TrellivarApp(const TrellivarApp&) = delete;
  TrellivarApp& operator=(const TrellivarApp&) = delete;

  /// Shows the windows, and starts what runs beside them. Answers whether there is a main window.
  bool launch();

  AppDelegate& delegate() { return delegate_; }

private:
  Report report();
  std::shared_ptr<SettingsStore> settingsFor(const Options& options) const;

  std::unique_ptr<PlatformServices> platform_;
  QtMainQueue queue_;
  std::unique_ptr<Computer> computer_;
  QtBackgroundQueue background_;
  FileTroubles troubles_;
  AppRoot root_;
  AppBridge bridge_;
  AppDelegate delegate_;
  QQmlApplicationEngine qml_;
};

} // namespace trellivar
