#include "app/bridge/app_bridge.h"

#include "app/bridge/text.h"
#include "core/l10n.h"

#include <QJSEngine>

namespace trellivar {

namespace {

AppBridge* existing = nullptr;

QVariantMap textsIn(AppLanguage language) {
  QVariantMap texts;
  for (const L10n::Key key : L10n::allKeys)
    texts.insert(qtText(L10n::rawValue(key)), qtText(L10n::text(key, language)));
  return texts;
}

} // namespace

AppBridge::AppBridge(AppRoot& root, PlatformServices& platform, QObject* parent)
    : Refreshing(parent),
      root_(root),
      platform_(platform),
      onboarding_(root),
      mapping_(root),
      devices_(root),
      write_(root),
      picker_(root) {
  existing = this;
  const SettingsStore& settings = root_.settings();
  watch(settings.language());
  watch(settings.appearance());
  watch(settings.startAtLogin());
  platform_.onAppearanceChanged([this] { later(); });
  refresh();
}

AppBridge* AppBridge::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/) {
  QJSEngine::setObjectOwnership(existing, QJSEngine::CppOwnership);
  return existing;
}

void AppBridge::setLanguage(const QString& language) {
  if (const auto chosen = AppLanguage::fromRawValue(language.toStdString()))
    root_.settings().setLanguage(*chosen);
}

void AppBridge::setAppearance(const QString& appearance) {
  if (const auto chosen = appearanceFromRawValue(appearance.toStdString()))
    root_.settings().setAppearance(*chosen);
}

void AppBridge::setStartAtLogin(bool startAtLogin) {
  root_.settings().setStartAtLogin(startAtLogin);
}

void AppBridge::finishOnboarding() {
  if (!root_.onboarding().steps()->canContinue || !isOnboarding_) return;
  isOnboarding_ = false;
  Q_EMIT isOnboardingChanged();
}

void AppBridge::openPermissionSettings(int step) {
  if (step == 0) {
    platform_.promptForAccessibility();
    platform_.openSettings(PlatformServices::Page::accessibility);
  } else {
    platform_.openSettings(PlatformServices::Page::inputMonitoring);
  }
}

void AppBridge::openDiscovery() {
  const Profile* active = root_.profiles().active();
  if (!active) return;
  discovery_ = std::make_unique<DiscoveryBridge>(root_.discover(active->name), root_.settings());
  Q_EMIT discoveryChanged();
}

void AppBridge::closeDiscovery() {
  if (!discovery_) return;
  // QML may be in the middle of a call into it.
  discovery_.release()->deleteLater();
  Q_EMIT discoveryChanged();
}

void AppBridge::refresh() {
  const SettingsStore& settings = root_.settings();
  if (take(language_, qtText(settings.language()->rawValue()))) {
    texts_ = textsIn(*settings.language());
    Q_EMIT textsChanged();
  }
  if (take(appearance_, qtText(rawValue(*settings.appearance())))) {
    platform_.setAppearance(*settings.appearance());
    Q_EMIT appearanceChanged();
  }
  if (take(isDark_, platform_.isDark())) Q_EMIT isDarkChanged();
  if (take(startAtLogin_, *settings.startAtLogin())) Q_EMIT startAtLoginChanged();
}

} // namespace trellivar
