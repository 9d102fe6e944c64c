#include "app/keyboard_icon.h"

#include <QPainter>
#include <QPixmap>

namespace trellivar {

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

} // namespace trellivar
