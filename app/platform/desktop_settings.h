#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <functional>
#include <optional>

namespace trellivar {

/// What a desktop of Linux tells all applications about how its user wants them to look. It is
/// asked without waiting, and until it answers, or if it never does, the palette that it gave
/// decides.
class DesktopSettings : public QObject {
  Q_OBJECT

public:
  /// `changed` is called after each change. The desktop answers on the bus.
  DesktopSettings(QDBusConnection bus, std::function<void()> changed);

  bool isDark() const;
  bool isMotionReduced() const { return isMotionReduced_; }

  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  Q_SLOT void take(const QString& group, const QString& key, const QDBusVariant& value);
  void ask(const QString& group, const QString& key);

  QDBusConnection bus_;
  std::function<void()> changed_;
  std::optional<bool> prefersDark_;
  bool isMotionReduced_ = false;
};

} // namespace trellivar
