#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>
#include <QProcess>
#include <QVariant>
#include <map>
#include <utility>

namespace trellivar {

/// A message bus that ends with the object.
class Bus {
public:
  Bus() {
    daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    EXPECT_TRUE(daemon_.waitForReadyRead()) << daemon_.errorString().toStdString();
    address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
  }
  ~Bus() {
    for (const QString& name : names_)
      QDBusConnection::disconnectFromBus(name);
    daemon_.kill();
    daemon_.waitForFinished();
  }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  /// The connection of a party on the bus.
  QDBusConnection connect(const QString& name) {
    names_.append(name);
    return QDBusConnection::connectToBus(address_, name);
  }

private:
  QProcess daemon_;
  QString address_;
  QStringList names_;
};

/// The part of a desktop that tells applications what its user prefers.
class DesktopPortal : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
  /// On a bus, from now on.
  void appear(QDBusConnection bus) {
    EXPECT_TRUE(
        bus.registerObject("/org/freedesktop/portal/desktop", this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    EXPECT_TRUE(bus.registerService("org.freedesktop.portal.Desktop"));
  }
  void prefer(uint scheme) { tell("org.freedesktop.appearance", "color-scheme", scheme); }
  void animate(bool enabled) { tell("org.gnome.desktop.interface", "enable-animations", enabled); }
  void tell(const QString& group, const QString& key, const QVariant& value) {
    values_[{group, key}] = value;
    Q_EMIT SettingChanged(group, key, QDBusVariant(value));
  }

public Q_SLOTS:
  // NOLINTNEXTLINE(readability-identifier-naming): the bus knows it by this name
  QDBusVariant Read(const QString& group, const QString& key) const {
    const auto found = values_.find({group, key});
    const QVariant value = found == values_.end() ? QVariant(uint{0}) : found->second;
    return QDBusVariant(QVariant::fromValue(QDBusVariant(value)));
  }

Q_SIGNALS:
  // NOLINTNEXTLINE(readability-identifier-naming)
  void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
  std::map<std::pair<QString, QString>, QVariant> values_{
      {{"org.gnome.desktop.interface", "enable-animations"}, true}};
};

} // namespace trellivar
