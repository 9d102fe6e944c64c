#include "app/platform/desktop_settings.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace trellivar {

namespace {

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";

const QString appearance = "org.freedesktop.appearance";
const QString colourScheme = "color-scheme"; ///< 1 prefers dark, 2 light; others nothing
const QString interface = "org.gnome.desktop.interface";
const QString animations = "enable-animations";

/// The answer to a question is packed once more than the news of a change.
QVariant unpacked(QVariant value) {
  while (value.canConvert<QDBusVariant>())
    value = value.value<QDBusVariant>().variant();
  return value;
}

bool isPaletteDark() {
  const QPalette palette = QGuiApplication::palette();
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

} // namespace

DesktopSettings::DesktopSettings(QDBusConnection bus, std::function<void()> changed)
    : bus_(std::move(bus)), changed_(std::move(changed)) {
  QGuiApplication::instance()->installEventFilter(this);
  qRegisterMetaType<QDBusVariant>(); // or the bus does not find the slot that takes one
  bus_.connect(service, path, settings, "SettingChanged", this,
               SLOT(take(QString, QString, QDBusVariant)));
  ask(appearance, colourScheme);
  ask(interface, animations);
}

bool DesktopSettings::isDark() const { return prefersDark_ ? *prefersDark_ : isPaletteDark(); }

bool DesktopSettings::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp) changed_();
  return false;
}

void DesktopSettings::ask(const QString& group, const QString& key) {
  QDBusMessage question = QDBusMessage::createMethodCall(service, path, settings, "Read");
  question << group << key;
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, group, key] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    answer->deleteLater();
    if (!reply.isError()) take(group, key, reply.value());
  });
}

void DesktopSettings::take(const QString& group, const QString& key, const QDBusVariant& value) {
  const QVariant content = unpacked(QVariant::fromValue(value));
  if (group == appearance && key == colourScheme) {
    const uint preference = content.toUInt();
    prefersDark_ = preference == 1   ? std::optional(true)
                   : preference == 2 ? std::optional(false)
                                     : std::nullopt;
  } else if (group == interface && key == animations) {
    isMotionReduced_ = !content.toBool();
  } else {
    return;
  }
  changed_();
}

} // namespace trellivar
