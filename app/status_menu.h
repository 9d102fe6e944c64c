#pragma once

#include "viewmodels/settings_store.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <functional>

namespace trellivar {

/// The icon in the status area with its menu. Where there is no such area, nothing.
class StatusMenu {
public:
  StatusMenu(SettingsStore& settings, std::function<void()> open);
  StatusMenu(const StatusMenu&) = delete;
  StatusMenu& operator=(const StatusMenu&) = delete;

  QMenu& menu() { return menu_; }

private:
  void refresh();

  SettingsStore& settings_;
  QMenu menu_;
  QSystemTrayIcon icon_;
  QAction* open_;
  QAction* startAtLogin_;
  QAction* quit_;
};

} // namespace trellivar
