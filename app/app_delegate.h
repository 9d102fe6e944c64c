#pragma once

#include "app/platform/platform_services.h"
#include "viewmodels/settings_store.h"

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QWindow>
#include <optional>

namespace trellivar {

/// The application apart from what its window shows: the icon in the status area with its menu, the
/// start at login, and the return of the main window. Lives as long as the process.
class AppDelegate {
public:
  /// Both must outlive it.
  AppDelegate(SettingsStore& settings, PlatformServices& platform);
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  /// The window that comes back when it is asked for.
  void setMainWindow(QWindow* window) { mainWindow_ = window; }

  void applicationDidFinishLaunching();
  /// The application stays in the status area without a window. Where there is no such area,
  /// starting it again brings the window back.
  static constexpr bool applicationShouldTerminateAfterLastWindowClosed() { return false; }
  /// The application was called, for instance by a click in the Dock.
  void applicationShouldHandleReopen(bool hasVisibleWindows);

  /// Brings the main window in front of all others, also after it was closed.
  void openMainWindow();
  /// Registers the application to be started at login, or no longer. A failure goes to the log.
  void setLoginItem(bool enabled);

  /// Before the menu opens: what it shows is that of now.
  void menuNeedsUpdate();
  QMenu& menu() { return menu_; }
  /// There once the application has launched.
  const QSystemTrayIcon& statusItem() const { return statusItem_.value(); }

private:
  void installStatusItem();
  void openFromMenu() { openMainWindow(); }
  void toggleLogin();

  SettingsStore& settings_;
  PlatformServices& platform_;
  QPointer<QWindow> mainWindow_;
  QMenu menu_; ///< of the status item, which must not outlive it
  QAction* openItem_ = nullptr;
  QAction* loginToggleItem_ = nullptr;
  QAction* quitItem_ = nullptr;
  std::optional<QSystemTrayIcon> statusItem_;
  QObject context_; ///< what is connected ends with it
};

} // namespace trellivar
