#include "viewmodels/settings_store.h"

#include "core/l10n.h"

#include <string_view>
#include <utility>

namespace trellivar {

namespace {

// Persistent: never change.
constexpr std::string_view languageKey = "appLanguage";
constexpr std::string_view appearanceKey = "appAppearance";
constexpr std::string_view startAtLoginKey = "startAtLogin";
constexpr std::string_view finishedOnboardingKey = "hasFinishedOnboarding";
constexpr std::string_view didAutoEnableKey = "didAutoEnableLoginItem";

AppLanguage languageIn(const UserDefaults& defaults) {
  if (const auto text = defaults.string(languageKey)) {
    if (const auto language = AppLanguage::fromRawValue(*text)) return *language;
  }
  return AppLanguage::systemDefault(defaults.preferredLanguages());
}

AppAppearance appearanceIn(const UserDefaults& defaults) {
  const auto text = defaults.string(appearanceKey);
  return appearanceFromRawValue(text.value_or("")).value_or(AppAppearance::system);
}

} // namespace

SettingsStore::SettingsStore(std::shared_ptr<UserDefaults> defaults)
    : defaults_(std::move(defaults)),
      language_(languageIn(*defaults_)),
      appearance_(appearanceIn(*defaults_)),
      startAtLogin_(defaults_->boolean(startAtLoginKey)) {
  L10n::setCurrent(*language_);
}

void SettingsStore::setLanguage(AppLanguage language) {
  language_.set(language);
  defaults_->setString(languageKey, language.rawValue());
  L10n::setCurrent(language);
}

void SettingsStore::setAppearance(AppAppearance appearance) {
  appearance_.set(appearance);
  defaults_->setString(appearanceKey, rawValue(appearance));
}

void SettingsStore::setStartAtLogin(bool startAtLogin) {
  startAtLogin_.set(startAtLogin);
  defaults_->setBoolean(startAtLoginKey, startAtLogin);
  if (onStartAtLoginChanged_) onStartAtLoginChanged_(startAtLogin);
}

void SettingsStore::onStartAtLoginChanged(std::function<void(bool)> callback) {
  onStartAtLoginChanged_ = std::move(callback);
}

bool SettingsStore::hasFinishedOnboarding() const {
  return defaults_->boolean(finishedOnboardingKey);
}

void SettingsStore::finishOnboarding() { defaults_->setBoolean(finishedOnboardingKey, true); }

void SettingsStore::autoEnableLoginItemIfFirstTime() {
  if (defaults_->boolean(didAutoEnableKey)) return;
  defaults_->setBoolean(didAutoEnableKey, true);
  setStartAtLogin(true);
}

} // namespace trellivar
