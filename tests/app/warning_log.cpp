#include "tests/app/warning_log.h"

namespace trellivar {

namespace {

WarningLog* current = nullptr;

/// A display that exists in memory only says so whenever a window has limits.
bool isOfTheDisplay(const QString& message) {
  return message == "This plugin does not support propagateSizeHints()";
}

} // namespace

WarningLog::WarningLog(QStringList& heard)
    : heard_(heard), next_(qInstallMessageHandler(&WarningLog::hear)) {
  current = this;
}

WarningLog::~WarningLog() {
  current = nullptr;
  qInstallMessageHandler(next_);
}

void WarningLog::hear(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (isOfTheDisplay(message)) return;
  const bool isHarmless = type == QtDebugMsg || type == QtInfoMsg;
  if (!isHarmless) current->heard_ += message;
  if (current->next_) current->next_(type, context, message);
}

} // namespace trellivar
