#pragma once

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
class StatusMenu;

/// Builds every object of the application once and runs it.
class Application {
public:
  explicit Application(const Options& options);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  ~Application();

  /// Until the user quits. Returns the exit code.
  int run();

private:
  std::shared_ptr<SettingsStore> settingsFor(const Options& options) const;
  AppRoot::Setup services(const Options& options);
  AppRoot::Setup setup(const Options& options);
  void openMainWindow();

  std::unique_ptr<PlatformServices> platform_;
  QtMainQueue queue_;
  std::unique_ptr<DeskSession> desk_; ///< null on a real computer
  bool hasEngine_ = true;             ///< false where keys are not remapped
  QtBackgroundQueue background_;
  AppRoot root_;
  AppBridge bridge_;
  std::unique_ptr<DeskBridge> deskBridge_;
  std::unique_ptr<StatusMenu> menu_;
  QQmlApplicationEngine qml_;
};

} // namespace trellivar
