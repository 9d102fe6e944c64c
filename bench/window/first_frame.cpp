#include "bench/window/first_frame.h"

#include <QEvent>

namespace trellivar {

bool FirstFrame::eventFilter(QObject* watched, QEvent* event) {
  auto* window = qobject_cast<QQuickWindow*>(watched);
  if (!isWatching_ && window && event->type() == QEvent::Show && window->title() == "Trellivar") {
    isWatching_ = true;
    connect(
        window, &QQuickWindow::frameSwapped, this, [this, window] { shown_(*window); },
        Qt::SingleShotConnection);
  }
  return false;
}

} // namespace trellivar
