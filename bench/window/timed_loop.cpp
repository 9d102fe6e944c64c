#include "bench/window/timed_loop.h"

#include <QThread>
#include <algorithm>
#include <utility>

namespace trellivar {

bool TimedLoop::notify(QObject* receiver, QEvent* event) {
  const int level = thread()->loopLevel();
  // Events inside an event belong to it, but for those of a loop that it runs.
  if (level == level_) return QApplication::notify(receiver, event);
  const int outer = std::exchange(level_, level);
  const auto began = std::chrono::steady_clock::now();
  const bool result = QApplication::notify(receiver, event);
  longest_ = std::max(longest_, std::chrono::steady_clock::now() - began);
  level_ = outer;
  return result;
}

TimedLoop::Duration TimedLoop::takeLongest() { return std::exchange(longest_, Duration{}); }

} // namespace trellivar
