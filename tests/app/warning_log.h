#pragma once

#include <QStringList>
#include <QtGlobal>

namespace trellivar {

/// Hears every warning of Qt and of QML in the process while it lives; they are still printed. One
/// at a time.
class WarningLog {
public:
  /// They are added to `heard`, which must outlive it.
  explicit WarningLog(QStringList& heard);
  WarningLog(const WarningLog&) = delete;
  WarningLog& operator=(const WarningLog&) = delete;
  ~WarningLog();

private:
  static void hear(QtMsgType type, const QMessageLogContext& context, const QString& message);

  QStringList& heard_;
  QtMessageHandler next_;
};

} // namespace trellivar
