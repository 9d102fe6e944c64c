#pragma once

#include <QStringList>
#include <QtGlobal>
#include <utility>

namespace trellivar {

/// Hears every warning of Qt and of QML in the process while it lives; they are still printed. One
/// at a time.
class WarningLog {
public:
  WarningLog();
  WarningLog(const WarningLog&) = delete;
  WarningLog& operator=(const WarningLog&) = delete;
  ~WarningLog();

  const QStringList& heard() const { return heard_; }
  /// What was heard until now, which then counts no more.
  QStringList take() { return std::exchange(heard_, {}); }

private:
  static void hear(QtMsgType type, const QMessageLogContext& context, const QString& message);

  QStringList heard_;
  QtMessageHandler next_;
};

} // namespace trellivar
