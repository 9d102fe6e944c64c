#include "tests/app/journeys/screen.h"

#include "tests/app/journeys/running_application.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

namespace trellivar {

QImage pictureOf(const QRect& place) {
  QImage picture;
  onMainThread([&] {
    picture = QGuiApplication::primaryScreen()
                  ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
                  .toImage();
  });
  return picture;
}

} // namespace trellivar
