#include "app/app_delegate.h"

#include "app/bridge/text.h"
#include "app/keyboard_icon.h"
#include "core/l10n.h"
#include "engine/log.h"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <exception>
#include <string>

namespace trellivar {

namespace {

bool isAnyWindowVisible() {
  return std::ranges::any_of(QGuiApplication::topLevelWindows(),
                             [](const QWindow* window) { return window->isVisible(); });
}

} // namespace

AppDelegate::AppDelegate(SettingsStore& settings, PlatformServices& platform)
    : settings_(settings), platform_(platform) {
  QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
}

void AppDelegate::applicationDidFinishLaunching() {
  platform_.activate();
  installStatusItem();
  settings_.onStartAtLoginChanged([this](bool enabled) { setLoginItem(enabled); });
  if (*settings_.startAtLogin()) setLoginItem(true);
  // A click in the Dock is told by the application becoming active, if it was not. The window is
  // shown from the loop, since the system is in the middle of the change.
  QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &context_,
                   [this](Qt::ApplicationState state) {
                     if (state != Qt::ApplicationActive) return;
                     QTimer::singleShot(0, &context_, [this] {
                       applicationShouldHandleReopen(isAnyWindowVisible());
                     });
                   });
}

void AppDelegate::installStatusItem() {
  openItem_ = menu_.addAction("");
  loginToggleItem_ = menu_.addAction("");
  loginToggleItem_->setCheckable(true);
  menu_.addSeparator();
  quitItem_ = menu_.addAction("");
  quitItem_->setShortcut(QKeySequence("Ctrl+Q"));
  QObject::connect(openItem_, &QAction::triggered, &context_, [this] { openFromMenu(); });
  QObject::connect(loginToggleItem_, &QAction::triggered, &context_, [this] { toggleLogin(); });
  QObject::connect(quitItem_, &QAction::triggered, &QCoreApplication::quit);
  QObject::connect(&menu_, &QMenu::aboutToShow, &context_, [this] { menuNeedsUpdate(); });
  menuNeedsUpdate();

  statusItem_.emplace(keyboardIcon());
  statusItem_->setToolTip("Trellivar");
  statusItem_->setContextMenu(&menu_);
  statusItem_->show();
}

void AppDelegate::menuNeedsUpdate() {
  openItem_->setText(qtText(L10n::t(L10n::Key::menuOpen)));
  loginToggleItem_->setText(qtText(L10n::t(L10n::Key::startAtLogin)));
  loginToggleItem_->setChecked(*settings_.startAtLogin());
  quitItem_->setText(qtText(L10n::t(L10n::Key::menuQuit)));
}

void AppDelegate::toggleLogin() { settings_.setStartAtLogin(!*settings_.startAtLogin()); }

void AppDelegate::openMainWindow() {
  platform_.activate();
  if (!mainWindow_) return;
  mainWindow_->setWindowStates(mainWindow_->windowStates() & ~Qt::WindowMinimized);
  mainWindow_->setVisible(true); // show() would also undo that it is maximized
  mainWindow_->raise();
  mainWindow_->requestActivate();
}

void AppDelegate::applicationShouldHandleReopen(bool hasVisibleWindows) {
  if (!hasVisibleWindows) openMainWindow();
}

void AppDelegate::setLoginItem(bool enabled) {
  try {
    platform_.setLoginItem(enabled);
  } catch (const std::exception& error) {
    debugLog(std::string("the start at login cannot be changed: ") + error.what());
  }
}

} // namespace trellivar
