#include "app/bridge/app_bridge.h"

#include "app/bridge/text.h"

#include <QJSEngine>

namespace trellivar {

namespace {

AppBridge* existing = nullptr;

} // namespace

AppBridge::AppBridge(AppRoot& root, PlatformServices& platform, FileTroubles& troubles,
                     bool hasEngine, QObject* parent)
    : Refreshing(parent),
      root_(root),
      platform_(platform),
      troubles_(troubles),
      onboarding_(root),
      mapping_(root),
      devices_(root),
      write_(root),
      picker_(root),
      notes_(root, troubles, hasEngine) {
  existing = this;
  const SettingsStore& settings = root_.settings();
  watch(settings.language());
  watch(settings.appearance());
  watch(settings.startAtLogin());
  watch(root_.isOnboarding());
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

void AppBridge::finishOnboarding() { root_.finishOnboarding(); }

void AppBridge::openPermissionSettings(int step) {
  if (step == 0) {
    platform_.promptForAccessibility();
    platform_.openSettings(PlatformServices::Page::accessibility);
  } else {
    platform_.openSettings(PlatformServices::Page::inputMonitoring);
  }
}

void AppBridge::followNote(int index) {
  using Kind = NotesBridge::Kind;
  switch (static_cast<Kind>(index)) {
  case Kind::files:
    return troubles_.dismiss();
  case Kind::noEngine:
    return;
  case Kind::accessibility:
    return openPermissionSettings(0);
  case Kind::inputMonitoring:
    return openPermissionSettings(1);
  case Kind::undiscovered:
    return openDiscovery();
  }
}

void AppBridge::openDiscovery() {
  const Profile* active = root_.profiles().active();
  if (!active || discovery_) return;
  discovery_ = std::make_unique<DiscoveryBridge>(root_.discover(active->name), root_.settings());
  Q_EMIT discoveryChanged();
}

void AppBridge::closeDiscovery() {
  if (!discovery_) return;
  // QML may be in the middle of a call into it.
  discovery_.release()->deleteLater();
  notes_.refresh(); // what was learned may be of no device that anything watches
  Q_EMIT discoveryChanged();
}

void AppBridge::refresh() {
  const SettingsStore& settings = root_.settings();
  if (take(language_, qtText(settings.language()->rawValue()))) {
    Q_EMIT texts_.changed();
    Q_EMIT languageChanged();
  }
  if (take(appearance_, qtText(rawValue(*settings.appearance())))) {
    platform_.setAppearance(*settings.appearance());
    Q_EMIT appearanceChanged();
  }
  if (take(isDark_, platform_.isDark())) Q_EMIT isDarkChanged();
  if (take(isMotionReduced_, platform_.isMotionReduced())) Q_EMIT isMotionReducedChanged();
  if (take(isOnboarding_, *root_.isOnboarding())) Q_EMIT isOnboardingChanged();
  if (take(startAtLogin_, *settings.startAtLogin())) Q_EMIT startAtLoginChanged();
}

} // namespace trellivar
