#include "tests/app/journeys/warnings.h"

#include <QString>
#include <QtGlobal>
#include <mutex>
#include <utility>

namespace trellivar {

namespace {

std::mutex mutex;
std::string collected;

void collect(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  if (type == QtDebugMsg || type == QtInfoMsg) return;
  const std::lock_guard lock(mutex);
  collected += message.toStdString() + '\n';
}

} // namespace

void collectWarnings() { qInstallMessageHandler(collect); }

std::string takeWarnings() {
  const std::lock_guard lock(mutex);
  return std::exchange(collected, {});
}

} // namespace trellivar
