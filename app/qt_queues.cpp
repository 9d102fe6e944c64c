#include "app/qt_queues.h"

#include <QMetaObject>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

namespace trellivar {

Instant QtMainQueue::now() const {
  return Instant(std::chrono::steady_clock::now().time_since_epoch());
}

void QtMainQueue::async(Block block) {
  QMetaObject::invokeMethod(&context_, std::move(block), Qt::QueuedConnection);
}

WorkItem QtMainQueue::asyncAfter(Seconds delay, Block block) {
  auto shared = std::make_shared<Block>(std::move(block));
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(std::max(delay, Seconds::zero()));
  QTimer::singleShot(wait, Qt::PreciseTimer, &context_, [shared] {
    if (const Block due = std::exchange(*shared, nullptr)) due();
  });
  return WorkItem(std::move(shared));
}

} // namespace trellivar
