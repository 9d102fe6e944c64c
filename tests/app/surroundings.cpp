#include "tests/app/surroundings.h"

#include <QByteArray>

namespace trellivar {

void useKnownSurroundings() {
  qputenv("QT_QUICK_BACKEND", "software");
  qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
  qputenv("QT_FONT_DPI", "96");
  qputenv("FONTCONFIG_FILE", TRELLIVAR_FONTS);
  // No desktop has a say in it either.
  qputenv("QT_QPA_PLATFORMTHEME", "none");
  for (const char* name : {"QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE", "QT_QUICK_CONTROLS_STYLE"})
    qunsetenv(name);
}

void paintInMemory() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

} // namespace trellivar
