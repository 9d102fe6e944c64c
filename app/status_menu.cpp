#include "app/status_menu.h"

#include "app/bridge/text.h"
#include "core/l10n.h"

#include <QAction>
#include <QCoreApplication>
#include <QPainter>
#include <QPixmap>

namespace trellivar {

namespace {

/// A keyboard, as a mask: where the system tints such icons, it takes the place of the colour.
QIcon keyboardIcon() {
  QPixmap pixmap(44, 44);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::black);
  painter.setPen(Qt::NoPen);
  painter.drawRoundedRect(QRectF(2, 10, 40, 26), 5, 5);
  painter.setCompositionMode(QPainter::CompositionMode_Clear);
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 5; ++column)
      painter.drawRect(QRectF(6.0 + column * 7, 14.0 + row * 7, 4, 4));
  }
  painter.drawRect(QRectF(12, 28, 20, 4));
  painter.end();
  QIcon icon(pixmap);
  icon.setIsMask(true);
  return icon;
}

} // namespace

StatusMenu::StatusMenu(SettingsStore& settings, std::function<void()> open)
    : settings_(settings),
      icon_(keyboardIcon()),
      open_(menu_.addAction("")),
      startAtLogin_(menu_.addAction("")),
      quit_(nullptr) {
  menu_.addSeparator();
  quit_ = menu_.addAction("");
  quit_->setShortcut(QKeySequence("Ctrl+Q"));
  startAtLogin_->setCheckable(true);
  QObject::connect(open_, &QAction::triggered, &menu_, std::move(open));
  QObject::connect(startAtLogin_, &QAction::triggered, &menu_,
                   [this] { settings_.setStartAtLogin(!*settings_.startAtLogin()); });
  QObject::connect(quit_, &QAction::triggered, &menu_, [] { QCoreApplication::quit(); });
  QObject::connect(&menu_, &QMenu::aboutToShow, &menu_, [this] { refresh(); });
  refresh();
  icon_.setToolTip("Trellivar");
  icon_.setContextMenu(&menu_);
  icon_.show();
}

void StatusMenu::refresh() {
  open_->setText(qtText(L10n::t(L10n::Key::menuOpen)));
  startAtLogin_->setText(qtText(L10n::t(L10n::Key::startAtLogin)));
  startAtLogin_->setChecked(*settings_.startAtLogin());
  quit_->setText(qtText(L10n::t(L10n::Key::menuQuit)));
}

} // namespace trellivar
