#pragma once

#include "app/app_delegate.h"
#include "app/bridge/app_bridge.h"
#include "app/options.h"
#include "app/platform/platform_services.h"
#include "app/qt_queues.h"
#include "viewmodels/app_root.h"

#include <QQmlApplicationEngine>
#include <memory>

namespace trellivar {

class DeskBridge;
class DeskSession;

/// Builds every object of the application once. Its single window shows `AppRoot`.
class TrellivarApp {
public:
  explicit TrellivarApp(const Options& options);
  TrellivarApp(const TrellivarApp&) = delete;
  TrellivarApp& operator=(const TrellivarApp&) = delete;
  ~TrellivarApp();

  /// Shows the windows, and starts what runs beside them. Answers whether there is a main window.
  bool launch();

  AppDelegate& delegate() { return delegate_; }

private:
  std::shared_ptr<SettingsStore> settingsFor(const Options& options) const;
  AppRoot::Setup services(const Options& options);
  AppRoot::Setup setup(const Options& options);

  std::unique_ptr<PlatformServices> platform_;
  QtMainQueue queue_;
  std::unique_ptr<DeskSession> desk_; ///< null on a real computer
  bool hasEngine_ = true;             ///< false where keys are not remapped
  QtBackgroundQueue background_;
  AppRoot root_;
  AppBridge bridge_;
  std::unique_ptr<DeskBridge> deskBridge_;
  AppDelegate delegate_;
  QQmlApplicationEngine qml_;
};

} // namespace trellivar
