#pragma once

#include <QPalette>

namespace trellivar {

inline QPalette paletteOf(QColor window, QColor text) {
  QPalette palette;
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  return palette;
}
inline QPalette darkPalette() { return paletteOf(Qt::black, Qt::white); }
inline QPalette lightPalette() { return paletteOf(Qt::white, Qt::black); }

} // namespace trellivar
